# Sourced: a program in the background, and what the kernel knows about it. Its output goes to
# $scratch/output.

process=

start() {  # start [NAME=VALUE...] PROGRAM [ARGUMENT...]: sets `process`, which is one of the /proc
  env "$@" >"$scratch/output" 2>&1 &
  process=$!
}

stop() {  # stop: ends what was started
  [ -n "$process" ] || return 0
  kill "$process" 2>/dev/null || true
  wait "$process" 2>/dev/null || true
  process=
}

is_running() {  # is_running: whether the process has not ended
  [ -n "$(memory_kib)" ]
}

processor_ns() {  # processor_ns: time of all threads of the process
  cat "/proc/$process"/task/*/schedstat | awk '{ sum += $1 } END { printf "%.0f\n", sum }'
}

wakeups() {  # wakeups THREAD: how often it slept, `*` for all threads together
  # shellcheck disable=SC2086 # a pattern
  awk '/^voluntary_ctxt_switches/ { sum += $2 } END { print sum + 0 }' \
    /proc/$process/task/$1/status
}

threads() {  # threads: the names, one a line
  cat "/proc/$process"/task/*/comm
}

memory_kib() {  # memory_kib: in proportion to how many share it
  awk '/^Pss:/ { print $2 }' "/proc/$process/smaps_rollup" 2>/dev/null || true
}

# Whether the figure that the command prints was the same for a second, and not 0, within that time.
is_steady_within() {  # is_steady_within SECONDS COMMAND...
  local before=-1 now=0 quiet=0 looks most=$(($1 * 10))
  shift
  for ((looks = 0; looks < most; ++looks)); do
    now=$("$@")
    if [ "$now" = "$before" ] && [ "$now" -gt 0 ]; then quiet=$((quiet + 1)); else quiet=0; fi
    [ "$quiet" -lt 10 ] || return 0
    before=$now
    sleep 0.1
  done
  return 1
}

until_steady() {  # until_steady COMMAND...: blocks until the figure has been steady for a second
  is_steady_within 30 "$@" && return
  echo "run: a program does not come to rest" >&2
  return 1
}

settle() {  # settle: blocks until the process rests
  until_steady processor_ns
}
