# Sourced by bench/run: the window beside a base that sends a status report every millisecond.

group "Beside a game: a status report every millisecond" "$command"

stream_sample() {  # stream_sample NAME: adds to NAME.time, NAME.all and NAME.mine of the main thread
  local time all mine
  time=$(processor_ns)
  all=$(wakeups '*')
  mine=$(wakeups "$process")
  sleep "$stream_seconds"
  divide $(($(processor_ns) - time)) $((stream_seconds * 1000000)) >>"$scratch/$1.time"
  divide $(($(wakeups '*') - all)) "$stream_seconds" >>"$scratch/$1.all"
  echo $(($(wakeups "$process") - mine)) >>"$scratch/$1.mine"
}

stream_floor_rows() {  # stream_floor_rows WHAT NAME
  row "$1, processor time a second" "$(median <"$scratch/$2.time")" ms
  row "  the window / that loop" \
    "$(quotients "$(cat "$scratch/window.time")" "$(cat "$scratch/$2.time")" | median)" x
}

is_streaming() {
  [ "$(wakeups "$process")" -gt 20 ]
}

# In turn with loops that only read, each report as it arrives or what a pause has gathered: what a
# wake-up and a read cost is the machine's doing.
stream_rows() {
  local round loop
  for ((round = 0; round < stream_rounds; ++round)); do
    for loop in bare gathering; do
      start "$bin/stream_window" "$loop"
      until_true 10 is_streaming
      stream_sample "$loop"
      stop
    done
    start "$bin/stream_window"
    # The process never comes to rest, its main thread does.
    until_steady wakeups "$process"
    stream_sample window
    stop
  done
  row "wake-ups a second" "$(median <"$scratch/window.all")" "" at-most 60
  row "wake-ups of the main thread" \
    "$(awk '{ sum += $1 } END { print sum }' "$scratch/window.mine")" "" at-most 0
  row "processor time a second" "$(median <"$scratch/window.time")" ms at-most 1
  row "a loop that reads each as it arrives, wake-ups a second" \
    "$(median <"$scratch/bare.all")" ""
  stream_floor_rows "a loop that reads each as it arrives" bare
  stream_floor_rows "a loop that reads every 20 ms" gathering
}

stream_rows
