# Sourced by bench/run: the window with nothing attached.

group "At rest" "$command"

idle_rows() {
  start "$bin/quorvane"
  settle
  local sleeps time
  sleeps=$(wakeups "$process")
  time=$(processor_ns)
  sleep "$idle_seconds"
  row "wake-ups of the main thread in $idle_seconds s" \
    "$(($(wakeups "$process") - sleeps))" "" at-most 0
  row "processor time in $idle_seconds s" \
    "$(divide $(($(processor_ns) - time)) 1000000)" ms at-most 1
  stop
}

idle_rows
