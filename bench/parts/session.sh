# Sourced by bench/run: exchanges with a base, and what its reports cost.

group "The session" "$command"

benchmark fetch_bench
fetch() { figure fetchAgainstFloor "$1"; }
row "request to snapshot, floor, median" "$(divide "$(fetch floor_p50_ns)" 1000)" us
row "request to snapshot, median" "$(divide "$(fetch fetch_p50_ns)" 1000)" us
row "  / floor, median" "$(fetch fetch_p50_ratio)" x at-most 1.5
row "  / floor, 99th percentile" "$(fetch fetch_p99_ratio)" x at-most 2
row "request to snapshot with a 1 kHz stream / without, median" \
  "$(figure fetchDuringStream stream_p50_ratio)" x at-most 1.1

read -r unasked_us latest_us asked_us slowest_us silent_us < <("$bin/arrival_bench" "$arrivals")
row "a menu sent unasked while reports gather, median" "$(divide "$unasked_us" 1000)" ms
row "a menu sent unasked while reports gather, latest" "$(divide "$latest_us" 1000)" ms at-most 50
row "request to snapshot while reports gather, median" "$asked_us" us
row "request to snapshot while reports gather, slowest" "$slowest_us" us
row "the same with a silent base, median" "$silent_us" us

verified_ms() {
  local i
  for ((i = 0; i < writes; ++i)); do
    "$bin/quorvanectl" --simulate --json set FF=80 2>/dev/null
  done | sed -n 's/^ *"milliseconds": \([0-9]*\).*$/\1/p' | median
}
row "a verified write, of which the pause is 250 ms" "$(verified_ms)" ms at-most 255

benchmark routing_bench
route() { figure routeUnchangedStatus "$1"; }
row "delivery of an unchanged status report" "$(route route_ns)" ns at-most 100
row "  to a handler that does nothing, with a copy" "$(route copy_ns)" ns
if command -v valgrind >/dev/null; then
  valgrind --tool=callgrind --callgrind-out-file="$scratch/callgrind" --collect-atstart=no \
    --toggle-collect='*WheelBase::connect*_M_invoke*' \
    "$bin/routing_bench" >/dev/null 2>"$scratch/valgrind"
  collected=$(sed -n 's/^.*Collected *: *\([0-9]*\).*$/\1/p' "$scratch/valgrind" | tail -n 1)
  row "instructions to route a status report" \
    "$(divide "${collected:-0}" "$(route routed_reports)")" ""
else
  absent "instructions to route a status report" "no valgrind"
fi

benchmark descriptor_bench
for shape in usual crowded; do
  reports=$(printf %.0f "$(figure ${shape}Descriptor reports)")
  row "summaries of a 237-byte descriptor with $reports reports" \
    "$(divide "$(figure ${shape}Descriptor cpu_time)" 1000)" us at-most 2
done
