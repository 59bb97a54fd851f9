# Sourced by bench/run: what the window's start costs in instructions, which scripts/check-start holds
# to the bar.

group "Instructions until the window idles" "$command"

floor=$(instructions "$bin" "$scratch" floor)
plain=$(instructions "$bin" "$scratch" quorvane)
simulated=$(instructions "$bin" "$scratch" quorvane --simulate)
row "the bare window" "$(divide "$floor" 1000000)" M
row "the window without a base" "$(divide "$plain" 1000000)" M
row "  / the bare window" "$(divide "$plain" "$floor")" x at-most 1.3
row "the window with a simulated base" "$(divide "$simulated" 1000000)" M
row "  / the bare window" "$(divide "$simulated" "$floor")" x
