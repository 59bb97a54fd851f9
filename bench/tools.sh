# Sourced: hardware tools of other fields, as Debian has them, to see the window's figures among.
# They get what they need to show their own window, a session bus, and nothing else: no service on the
# system bus, no sound server, no assistive technology. None is ever installed from here;
# scripts/setup compare does it.

tools=(piper solaar antimicrox jstest-gtk pavucontrol-qt)
declare -A tool_package=([antimicrox]=antimicro)
declare -A tool_shows=(
  [piper]="its window says that ratbagd is missing"
  [pavucontrol-qt]="its window waits for a sound server")

bus_process=

# Starts the session bus, and sets the environment that the tools and the window beside them get.
start_tools_bus() {
  local address
  mkfifo "$scratch/bus-address"
  dbus-daemon --session --nofork --nopidfile --print-address=3 \
    3>"$scratch/bus-address" >"$scratch/bus.log" 2>&1 &
  bus_process=$!
  if ! read -r -t 30 address <"$scratch/bus-address"; then
    cat "$scratch/bus.log" >&2
    return 1
  fi
  on_bus=(DBUS_SESSION_BUS_ADDRESS="$address" DBUS_SYSTEM_BUS_ADDRESS="unix:path=$scratch/none"
    PULSE_SERVER="unix:$scratch/none" NO_AT_BRIDGE=1)
}

stop_tools_bus() {  # stop_tools_bus: does nothing without one
  [ -n "$bus_process" ] || return 0
  kill "$bus_process" 2>/dev/null || true
  wait "$bus_process" 2>/dev/null || true
  bus_process=
}

installed_tools() {  # installed_tools: their commands, one a line
  local tool
  for tool in "${tools[@]}"; do
    if command -v "$tool" >/dev/null; then echo "$tool"; fi
  done
}

tool_name() {  # tool_name TOOL: with its version, where Debian's packages tell it
  local version
  version=$(dpkg-query -W -f '${Version}' "${tool_package[$1]-$1}" 2>/dev/null) || version=
  echo "$1${version:+ $version}"
}
