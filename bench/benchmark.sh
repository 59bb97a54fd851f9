# Sourced: the figures of programs that are made with the benchmark library.

# Each repetition starts threads of its own, which may lie well or badly on the processors: what
# counts is the median of all.
benchmark() {  # benchmark PROGRAM
  local arguments=(--benchmark_repetitions="$repetitions" --benchmark_report_aggregates_only=true
    --benchmark_out="$scratch/figures" --benchmark_out_format=json)
  if ! "$bin/$1" "${arguments[@]}" >"$scratch/log" 2>&1; then
    cat "$scratch/log" >&2
    return 1
  fi
}

figure() {  # figure BENCHMARK NAME: a figure of the program run last
  sed -n "/\"name\": \"$1[^\"]*_median\"/,/}/s/^ *\"$2\": \([^,]*\),\{0,1\}\$/\1/p" \
    "$scratch/figures"
}
