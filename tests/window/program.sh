# Sourced by the scripts beside it. Runs a program with a display and a session bus of its own.

here=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")
# shellcheck source=scripts/display.sh
source "$here/../../scripts/display.sh"

process=
scratch=$(mktemp -d)

# use_display x11|wayland: selects the kind of display. Fails for other words.
use_display() {
  [ "$1" = x11 ] || [ "$1" = wayland ] || return 1
  # shellcheck source=tests/window/wayland.sh
  source "$here/$1.sh"
}
use_display x11

# Ends the run, with exit status 1 if CI is set, else 77.
lacking() {  # lacking WHAT
  echo "tests/window: this machine lacks $1; to install it: scripts/setup window" >&2
  [ -z "${CI-}" ] || exit 1
  exit 77
}

check_means() {
  local program
  for program in "${display_means[@]}" dbus-daemon dbus-send; do
    command -v "$program" >/dev/null || lacking "$program"
  done
  /usr/bin/python3 -c 'import gi; gi.require_version("Atspi", "2.0")' 2>/dev/null ||
    lacking "the AT-SPI bindings for Python"
}

finish() {
  if [ -n "$process" ]; then
    kill "$process" 2>/dev/null || true
    wait "$process" 2>/dev/null || true
  fi
  stop_bus
  end_display
  rm -rf "$scratch"
}

# start_program FILE [ARGUMENT...]: sets `process`; its output goes to $scratch/output.
start_program() {
  check_means
  trap finish EXIT
  plain_environment "$scratch"
  begin_display
  start_bus "$scratch"
  export PYTHONDONTWRITEBYTECODE=1
  export QUORVANE_LOG_STDERR=1
  : >"$scratch/output"
  "$@" >>"$scratch/output" 2>&1 &
  process=$!
}

says() {  # says PATTERN: whether a whole line of the program's output matches
  grep -qxE "$1" "$scratch/output"
}
