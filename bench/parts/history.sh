# Sourced by bench/run: recording what is written to a base.

group "The history" "$command"

benchmark history_bench
row "recording a save of one value, in memory, 99th percentile" \
  "$(divide "$(figure recordInMemory record_p99_ns)" 1000000)" ms at-most 25
row "recording a save of one value, on the disk, 99th percentile" \
  "$(divide "$(figure recordOnDisk record_p99_ns)" 1000000)" ms at-most 25
