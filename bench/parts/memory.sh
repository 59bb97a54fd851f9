# Sourced by bench/run: what programs hold once they rest, in turn. Memory is Pss: what others use too
# counts in part.

group "Settled memory and threads" "$command"

settled() {  # settled KEY [NAME=VALUE...] PROGRAM [ARGUMENT...]: adds to the files of KEY
  start "${@:2}"
  settle
  memory_kib >>"$scratch/memory.$1"
  threads >"$scratch/threads.$1"
  stop
}

shows_window() {
  [ -n "$(xdotool search --onlyvisible --pid "$process" 2>/dev/null)" ] || ! is_running
}

# Some never rest altogether: then what they hold ten seconds after their window is shown counts. Of
# one that shows none nothing does.
settled_tool() {  # settled_tool TOOL
  start "${on_bus[@]}" "$1"
  if until_true 20 shows_window && is_running; then
    is_steady_within 10 processor_ns || true
    memory_kib >>"$scratch/memory.$1"
  fi
  stop
}

# The names stand below a row that is over.
threads_row() {  # threads_row WHAT BAR NAMES
  local count
  count=$(wc -l <<<"$3")
  row "$1" "$count" "" at-most "$2"
  [ "$count" -le "$2" ] || remark "${3//$'\n'/, }"
}

memory_row() {  # memory_row WHAT KEY
  row "$1" "$(divide "$(median <"$scratch/memory.$2")" 1024)" MiB
}

beyond_row() {  # beyond_row WHAT KEY
  row "$1" "$(divide "$(differences "$(cat "$scratch/memory.$2")" \
    "$(cat "$scratch/memory.floor")" | median)" 1024)" MiB at-most 8
}

mapfile -t present < <(installed_tools)
for ((round = 0; round < rounds; ++round)); do
  settled floor "$bin/floor"
  settled plain "$bin/quorvane"
  settled base "$bin/quorvane" --simulate
  settled bus "${on_bus[@]}" "$bin/quorvane"
  for tool in "${present[@]}"; do
    settled_tool "$tool"
  done
done

memory_row "memory of the bare window" floor
memory_row "memory of the window without a base" plain
beyond_row "  beyond the bare window" plain
memory_row "memory of the window with a simulated base" base
beyond_row "  beyond the bare window" base
memory_row "memory of the window on a session bus, as the tools" bus
for tool in "${tools[@]}"; do
  if [[ " ${present[*]} " != *" $tool "* ]]; then
    absent "memory of $tool" "not installed"
  elif [ ! -s "$scratch/memory.$tool" ]; then
    absent "memory of $(tool_name "$tool")" "shows no window"
  else
    memory_row "memory of $(tool_name "$tool")" "$tool"
  fi
done
threads_row "threads of the bare window" 4 "$(cat "$scratch/threads.floor")"
threads_row "threads of the window without a base" 4 "$(cat "$scratch/threads.plain")"
threads_row "threads of the window with a simulated base" 5 "$(cat "$scratch/threads.base")"
