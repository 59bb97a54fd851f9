# Sourced by bench/run: values that change in the window.

group "Drawing" "$command"

# Drags along lines across the window, one below the other: whatever sliders lie there move.
drag_across() {  # drag_across WINDOW
  local WIDTH HEIGHT y x
  eval "$(xdotool getwindowgeometry --shell "$1" | grep -E '^(WIDTH|HEIGHT)=[0-9]+$')"
  for ((y = HEIGHT / 5; y < HEIGHT * 9 / 10; y += 18)); do
    xdotool mousemove --window "$1" $((WIDTH * 45 / 100)) "$y" mousedown 1
    for ((x = 45; x <= 55; ++x)); do
      xdotool mousemove --window "$1" $((WIDTH * x / 100)) "$y"
    done
    xdotool mouseup 1
  done
}

raster_rows() {
  start QUORVANE_LOG_STDERR=1 "$bin/quorvane" --simulate
  settle
  local window
  window=$(xdotool search --onlyvisible --pid "$process" | tail -n 1)
  xdotool windowfocus --sync "$window"
  drag_across "$window"
  local names
  names=$(threads)
  xdotool key --window "$window" ctrl+s
  if ! until_true 10 grep -q '^\[log\] Saved' "$scratch/output"; then
    echo "run: nothing was changed" >&2
    return 1
  fi
  row "raster threads while values change" "$(grep -c '^Thread (pooled)' <<<"$names" || true)" "" \
    at-most 0
  stop
}

key_rows() {
  local middle most
  read -r middle most < <(QT_QPA_PLATFORM=offscreen "$bin/key_bench" 2>"$scratch/output")
  row "key press until its value is painted, median" "$(divide "$middle" 1000)" ms
  row "key press until its value is painted, 99th percentile" "$(divide "$most" 1000)" ms at-most 16
}

page_rows() {
  local count
  for count in 75 600; do
    row "opening the section with $count presets" \
      "$(QT_QPA_PLATFORM=offscreen "$bin/page_bench" "$count" 2>"$scratch/output")" ms at-most 50
  done
  row "a letter typed into the search of 600 presets, 95th percentile" \
    "$(QT_QPA_PLATFORM=offscreen "$bin/page_bench" 600 search 2>"$scratch/output")" ms at-most 16
  row "memory of the section with 600 presets" \
    "$(QT_QPA_PLATFORM=offscreen "$bin/page_bench" 600 memory 2>"$scratch/output")" MiB at-most 2
}

raster_rows
key_rows
page_rows
