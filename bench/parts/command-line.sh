# Sourced by bench/run: what a start of quorvanectl takes.

group "The command line" "$command"

# The programs take turns, so that whatever else the machine does hits all alike.
{
  read -r empty_us empty_kib
  read -r version_us version_kib
  read -r devices_us devices_kib
} < <("$bin/measure" "$starts" -- "$bin/empty" -- "$bin/quorvanectl" --version \
  -- "$bin/quorvanectl" devices)
row "an empty program" "$(divide "$empty_us" 1000)" ms
row "quorvanectl --version" "$(divide "$version_us" 1000)" ms
row "  / an empty program" "$(divide "$version_us" "$empty_us")" x at-most 1.5
if python=$(python3 -c 'import sys; print(sys.executable)' 2>/dev/null); then
  {
    read -r python_us _
    read -r alone_us _
  } < <("$bin/measure" "$python_starts" -- "$python" -c 'import json, argparse' \
    -- "$bin/quorvanectl" --version)
  row "the same start in Python / quorvanectl --version" "$(divide "$python_us" "$alone_us")" x \
    at-least 10
else
  absent "the same start in Python / quorvanectl --version" "no Python" at-least 10
fi
row "quorvanectl devices, whole" "$(divide "$devices_us" 1000)" ms
beyond_us=$(subtract "$devices_us" "$version_us")
nodes=$(find /sys/class/hidraw -mindepth 1 -maxdepth 1 2>/dev/null | wc -l)
row "  beyond --version, all nodes" "$(divide "$beyond_us" 1000)" ms
if [ "$nodes" -gt 0 ]; then
  row "  beyond --version, each of the $nodes nodes" "$(divide "$beyond_us" $((nodes * 1000)))" ms \
    at-most 0.3
else
  absent "  beyond --version, each node" "no nodes here" at-most 0.3
fi
row "peak memory of an empty program" "$(divide "$empty_kib" 1024)" MiB
row "peak memory of quorvanectl --version" "$(divide "$version_kib" 1024)" MiB at-most 6
row "peak memory of quorvanectl devices" "$(divide "$devices_kib" 1024)" MiB at-most 6

# The status says what was found.
doctor_ms() {  # doctor_ms [OPTION...]
  local begin=$EPOCHREALTIME
  "$bin/quorvanectl" "$@" doctor >/dev/null 2>&1 || [ $? -eq 1 ]
  awk -v begin="$begin" -v end="$EPOCHREALTIME" 'BEGIN { print (end - begin) * 1000 }'
}
row "quorvanectl doctor" "$(doctor_ms)" ms at-most 5000
row "quorvanectl doctor with a simulated base" "$(doctor_ms --simulate)" ms at-most 5000
