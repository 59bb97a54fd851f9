# Sourced by scripts that need root: other releases of Debian below a folder of this machine.
#
# QUORVANE_ROOTS: a folder that keeps each fresh root as an archive for the next time; without it every
# root is made anew from a mirror.

# make_root SUITE ROOT PACKAGE,...: a fresh, small system with these packages besides, with the lists of
# its mirror.
make_root() {
  local suite=$1 root=$2 packages=$3 archive=$2.tar
  if [ -n "${QUORVANE_ROOTS-}" ]; then
    mkdir -p "$QUORVANE_ROOTS"
    archive=$QUORVANE_ROOTS/$suite-$(cksum <<<"$packages" | cut -d' ' -f1).tar
  fi
  if [ ! -f "$archive" ]; then
    # The lists of sid run out within days, on mirrors that stand still too.
    mmdebstrap --variant=minbase --format=tar --skip=cleanup/apt/lists --include="$packages" \
      --aptopt='Acquire::Check-Valid-Until "false"' "$suite" "$archive.part"
    mv "$archive.part" "$archive"
  fi
  mkdir -p "$root"
  tar -C "$root" --numeric-owner --xattrs --exclude='./dev/*' -xf "$archive"
  [ -n "${QUORVANE_ROOTS-}" ] || rm -f "$archive"
}

# open_root ROOT: gives it this machine's devices, /proc, /sys and name server.
open_root() {
  local place
  for place in dev proc sys; do
    mount --rbind "/$place" "$1/$place"
    mount --make-rslave "$1/$place"
  done
  cp --remove-destination /etc/resolv.conf "$1/etc/resolv.conf"
}

# close_root ROOT: takes away what open_root gave; does nothing where there is none.
close_root() {
  local place
  for place in dev proc sys; do
    ! mountpoint -q "$1/$place" || umount -R "$1/$place"
  done
}

# in_root ROOT COMMAND...: as root, with an environment of its own.
in_root() {
  chroot "$1" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 \
    DEBIAN_FRONTEND=noninteractive "${@:2}"
}

# any_suite SUITE...: prints one of these, chosen by the commit that is checked out; or the suites that
# QUORVANE_ELSEWHERE names, none for "none".
any_suite() {
  local hash suites=("$@")
  case ${QUORVANE_ELSEWHERE-any} in
    any)
      hash=$(git rev-parse --short=7 HEAD 2>/dev/null) || hash=0
      echo "${suites[16#$hash % $#]}"
      ;;
    none) ;;
    *) echo "$QUORVANE_ELSEWHERE" ;;
  esac
}

# needs_root NAME: ends the script NAME unless root runs it.
needs_root() {
  [ "$(id -u)" -ne 0 ] || return 0
  echo "$1: needs root: sudo scripts/$1" >&2
  [ -z "${CI-}" ] || exit 1
  exit 77
}

# left_out NAME: ends the script NAME, which QUORVANE_ELSEWHERE leaves out.
left_out() {
  echo "$1: left out, as QUORVANE_ELSEWHERE says"
  exit 77
}
