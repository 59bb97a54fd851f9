# Programs that write to one base for several rounds.

# expect_on_base CODE=VALUE...: the values in a new read of the base.
expect_on_base() {
    local word filter=true
    for word in "$@"; do
        filter+=" and .tuning.values.${word%%=*} == ${word#*=}"
    done
    ctl --json read
    expect_success
    expect_json "$filter"
}

# Values for one round of each program, as words of `quorvanectl set`.
percent_values() {
    local few=$(($1 % 20)) some=$(($1 % 40))
    echo "SEN=$((500 + 10 * ($1 % 50))) FF=$((20 + some)) NDP=$((30 + some)) NFR=$((40 + some)) INT=$few NIN=$((50 + some)) FUL=$((60 + some))"
}

tens_values() {
    local tens=$(($1 % 10 * 10))
    echo "SHO=$tens BLI=$tens FOR=$tens SPR=$tens DPR=$tens brF=$tens FEI=$tens"
}

# write_rounds NAME COUNT VALUES: in each round, writes the words that VALUES prints. Every value
# must be read back, and all of them must still be there later.
write_rounds() {
    local name=$1 count=$2 values=$3 round
    local -a words
    work=$work/$name
    mkdir "$work"
    for ((round = 1; round <= count; round++)); do
        read -ra words <<<"$("$values" "$round")"
        ctl --json set "${words[@]}"
        expect_success
        expect_json 'all(.results[]; .error == null and .readBack == .value)'
        expect_on_base "${words[@]}"
    done
}

# start_rounds NAME COUNT VALUES: write_rounds in the background.
start_rounds() {
    write_rounds "$@" >"$work/$1.log" 2>&1 &
    background[$1]=$!
}

# finish_rounds NAME COUNT
finish_rounds() {
    local pid=${background[$1]}
    wait_until $(($2 * 25)) "the last round of '$1'" has_ended "$pid"
    wait "$pid" || fail "'$1' said: $(tail -n 20 "$work/$1.log")"
    unset "background[$1]"
}

# two_write_at_once ROUNDS: one program writes percent_values and another one tens_values, seven
# values each per round.
two_write_at_once() {
    start_base main --transport usb
    start_rounds percent "$1" percent_values
    start_rounds tens "$1" tens_values
    finish_rounds percent "$1"
    finish_rounds tens "$1"
    # shellcheck disable=SC2046
    expect_on_base $(percent_values "$1") $(tens_values "$1")
    expect_writes main $(($1 * 14))
}
