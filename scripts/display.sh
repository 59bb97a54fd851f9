# Sourced: an X server for the calling script, without window manager and session bus, and an
# environment without settings of the user.

# plain_environment DIRECTORY: unsets the variables of users and desktops; files go below DIRECTORY.
plain_environment() {
  local name
  for name in $(compgen -e | grep -E '^(QT_|QUORVANE_|XDG_|DESKTOP_|GTK_|WAYLAND_)'); do
    unset "$name"
  done
  export HOME=$1 XDG_RUNTIME_DIR=$1/run LC_ALL=C.UTF-8
  export DBUS_SESSION_BUS_ADDRESS=disabled: QT_QPA_PLATFORM=xcb
  mkdir -m 700 "$XDG_RUNTIME_DIR"
}

# start_display DIRECTORY [SIZE]: starts a display of this size (default: 1920x1200) and exports
# DISPLAY. The server's output goes to DIRECTORY.
start_display() {
  mkfifo "$1/display-number"
  Xvfb -displayfd 3 -screen 0 "${2-1920x1200}x24" -nolisten tcp -noreset \
    3>"$1/display-number" >"$1/display.log" 2>&1 &
  display_process=$!
  local number
  if ! read -r -t 30 number <"$1/display-number"; then
    cat "$1/display.log" >&2
    return 1
  fi
  export DISPLAY=:$number
}

stop_display() {  # stop_display: does nothing without one
  [ -n "${display_process-}" ] || return 0
  kill "$display_process" 2>/dev/null || true
  wait "$display_process" 2>/dev/null || true
  display_process=
}

# until_true SECONDS COMMAND...: polls until the command succeeds; fails on a time-out.
until_true() {
  local deadline=$((SECONDS + $1))
  shift
  until "$@"; do
    [ "$SECONDS" -lt "$deadline" ] || return 1
    sleep 0.05
  done
}

# start_bus DIRECTORY: starts and exports a session bus with the accessibility bus. Its output goes
# to DIRECTORY.
start_bus() {
  mkfifo "$1/bus-address"
  unset DBUS_SESSION_BUS_ADDRESS
  dbus-daemon --session --nofork --nopidfile --print-address=3 \
    3>"$1/bus-address" >"$1/bus.log" 2>&1 &
  bus_process=$!
  local address
  if ! read -r -t 30 address <"$1/bus-address"; then
    cat "$1/bus.log" >&2
    return 1
  fi
  export DBUS_SESSION_BUS_ADDRESS=$address QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1
  # Starts the accessibility bus: programs look for it, but do not start it.
  dbus-send --session --dest=org.a11y.Bus --print-reply \
    /org/a11y/bus org.a11y.Bus.GetAddress >"$1/bus.log" 2>&1
}

stop_bus() {  # stop_bus: does nothing without one
  [ -n "${bus_process-}" ] || return 0
  kill "$bus_process" 2>/dev/null || true
  wait "$bus_process" 2>/dev/null || true
  bus_process=
}
