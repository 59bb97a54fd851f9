# Sourced by scripts that need root: systems of other releases of Debian in folders of this machine.
#
# QUORVANE_ROOTS: a folder that caches each new root as an archive. Without it every root is made
# from a mirror.

# make_root SUITE ROOT PACKAGE,...: makes a new minimal system with these additional packages and
# the mirror's package lists.
make_root() {
  local suite=$1 root=$2 packages=$3 archive=$2.tar
  if [ -n "${QUORVANE_ROOTS-}" ]; then
    mkdir -p "$QUORVANE_ROOTS"
    archive=$QUORVANE_ROOTS/$suite-$(cksum <<<"$packages" | cut -d' ' -f1).tar
  fi
  if [ ! -f "$archive" ]; then
    # The lists of sid expire within days, also on mirrors that are not updated.
    mmdebstrap --variant=minbase --format=tar --skip=cleanup/apt/lists --include="$packages" \
      --aptopt='Acquire::Check-Valid-Until "false"' "$suite" "$archive.part"
    mv "$archive.part" "$archive"
  fi
  mkdir -p "$root"
  tar -C "$root" --numeric-owner --xattrs --exclude='./dev/*' -xf "$archive"
  [ -n "${QUORVANE_ROOTS-}" ] || rm -f "$archive"
}

# open_root ROOT: mounts this machine's devices, /proc and /sys in it, and copies the name server.
open_root() {
  local place
  for place in dev proc sys; do
    mount --rbind "/$place" "$1/$place"
    mount --make-rslave "$1/$place"
  done
  cp --remove-destination /etc/resolv.conf "$1/etc/resolv.conf"
}

# close_root ROOT: unmounts what open_root mounted, from processes that still use it as well;
# idempotent.
close_root() {
  local place
  for place in dev proc sys; do
    ! mountpoint -q "$1/$place" || umount -R "$1/$place" 2>/dev/null ||
      umount -R --lazy "$1/$place"
  done
}

# in_root ROOT COMMAND...: runs a command there as root, with a clean environment.
in_root() {
  chroot "$1" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 \
    DEBIAN_FRONTEND=noninteractive "${@:2}"
}

# any_suite SUITE...: prints one of these, chosen by the current commit; or the suites that
# QUORVANE_ELSEWHERE names; nothing for "none".
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

# left_out NAME: ends the script NAME, because QUORVANE_ELSEWHERE says so.
left_out() {
  echo "$1: left out, as QUORVANE_ELSEWHERE says"
  exit 77
}
