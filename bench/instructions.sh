# Sourced: what a window's start costs in instructions. Other than times, they are nearly the same
# in every run, on a busy machine too.

# instructions BIN PROFILES PROGRAM [ARGUMENT...]: those of all threads from the program's start
# until it idles, without a display. BIN holds the programs; the profile for callgrind_annotate goes
# to PROFILES/callgrind.PROGRAM.
instructions() {
  local bin=$1 profiles=$2 program=$3 count
  shift 3
  local profile=$profiles/callgrind.$program log=$profiles/$program.log
  local run=(env QT_QPA_PLATFORM=offscreen QT_HASH_SEED=0 LD_PRELOAD="$bin/first_idle.so"
    timeout 300)
  # The first run fills the caches.
  if ! "${run[@]}" "$bin/$program" "$@" >"$log" 2>&1 ||
    ! "${run[@]}" valgrind --tool=callgrind --callgrind-out-file="$profile" \
      "$bin/$program" "$@" >"$log" 2>&1; then
    cat "$log" >&2
    echo "instructions: $program does not come to idle" >&2
    return 1
  fi
  count=$(sed -n 's/^.*Collected *: *\([0-9]*\).*$/\1/p' "$log")
  [ -n "$count" ] || return 1
  echo "$count"
}
