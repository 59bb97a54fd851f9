# Sourced by the tests of the completion scripts in each shell: typed lines with the sorted
# candidates for their last word. "<files>" stands for file names. The shell under test defines
# `offered LINE`, which prints one candidate per line. `failures` counts the failures.

cases=0
failures=0

expect() {  # expect LINE CANDIDATE...
  local line=$1 wanted got
  shift
  wanted=$(printf '%s\n' "$@" | LC_ALL=C sort)
  got=$(offered "$line" | LC_ALL=C sort)
  cases=$((cases + 1))
  if [ "$got" != "$wanted" ]; then
    printf '%s\n  wanted: %s\n  got:    %s\n' "$line" "$(echo $wanted)" "$(echo $got)"
    failures=$((failures + 1))
  fi
}

run_cases() {
  expect 'quorvanectl rea' read
  expect 'quorvanectl presets s' show save share
  expect 'quorvanectl mode ' standard advanced
  expect 'quorvanectl --json --lay' --layout
  expect 'quorvanectl --layout ' sdk linux
  expect 'quorvanectl select ' 1 2 3 4 5
  expect 'quorvanectl set SEN=900 S' SHO= SPR=
  expect 'quorvanectl rotation ' ''
  expect 'quorvanectl presets delete My' 'My GT7'
  expect 'quorvanectl presets edit My' 'My GT7'
  expect 'quorvanectl presets list --game A' Any
  expect 'quorvanectl --simulate presets delete My' 'My GT7' 'My simulated one'
  expect 'quorvanectl presets import ' '<files>'
  expect 'quorvane --vers' --version
  expect 'quorvane ' '<files>'
  expect 'quorvane --transcript ' '<files>'
  expect 'quorvane --simulate-state ' '<files>'
  expect 'quorvane --simulate-' --simulate-state
  expect 'quorvanectl --simulate-state ' '<files>'
  expect 'quorvane --device ' ''
}
