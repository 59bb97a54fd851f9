# Sourced by bench/run: the application model.

group "The application model" "$command"

benchmark model_bench
row "start until connected, processor time" "$(figure startModelUntilConnected cpu_time)" ms \
  at-most 5
row "what the connected base is sent in 200 changes of the list" \
  "$(figure listWhileConnected sent)" "" at-most 0
