# Sourced by bench/run: how soon the window is there, next to a bare one (bench/floor.cpp) and to the
# tools, all in turn.

group "The window's start" "$command"

declare -A meaning=([2]="mapped" [3]="painted" [4]="drawn for good")

times_of() {  # times_of FIGURE NUMBER
  column "$1" "$2" <"$scratch/times"
}

window_rows() {  # window_rows NAME NUMBER FIGURE [at-most BAR]
  row "$1, ${meaning[$3]}" "$(divide "$(times_of "$3" "$2" | median)" 1000)" ms
  row "  / the bare window" "$(quotients "$(times_of "$3" "$2")" "$(times_of "$3" 1)" | median)" x \
    "${@:4}"
}

tool_rows() {  # tool_rows TOOL NUMBER
  local outcome figure
  outcome=$(times_of 2 "$2" | head -n 1)
  case $outcome in
    ended) absent "$1" "ends at once" ;;
    windowless) absent "$1" "shows no window" ;;
    *)
      for figure in 2 3; do
        row "$1, ${meaning[$figure]}" "$(divide "$(times_of "$figure" "$2" | median)" 1000)" ms
      done
      ;;
  esac
}

programs=(-- "$bin/floor" -- "$bin/quorvane" -- "$bin/quorvane" --simulate
  -- "${on_bus[@]}" "$bin/quorvane")
mapfile -t present < <(installed_tools)
for tool in "${present[@]}"; do
  programs+=(-- "${on_bus[@]}" "$tool")
done
"$bin/window_times" "$rounds" "${programs[@]}" >"$scratch/times"
if grep -qE '^[1-4] (ended|windowless)' "$scratch/times"; then
  echo "run: a window of this tree does not show" >&2
  exit 1
fi

for figure in 2 3 4; do
  row "the bare window, ${meaning[$figure]}" \
    "$(divide "$(times_of "$figure" 1 | median)" 1000)" ms
  # The plain start is what counts; the last drawing with a base waits for its answers.
  bar=()
  if [ "$figure" -le 3 ]; then bar=(at-most 1.3); fi
  window_rows "the window without a base" 2 "$figure" "${bar[@]}"
  window_rows "the window with a simulated base" 3 "$figure"
done
for figure in 2 3; do
  window_rows "the window on a session bus, as the tools" 4 "$figure"
done
number=5
for tool in "${tools[@]}"; do
  if [[ " ${present[*]} " == *" $tool "* ]]; then
    tool_rows "$(tool_name "$tool")" "$number"
    if [ -n "${tool_shows[$tool]-}" ]; then remark "${tool_shows[$tool]}"; fi
    number=$((number + 1))
  else
    absent "$tool" "not installed"
  fi
done
