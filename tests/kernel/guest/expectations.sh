# Expectations about the program that ran last, and about the packets that reached a base.

expect_status() {
    [[ $STATUS == "$1" ]] || fail "exit status $STATUS instead of $1"
}

# expect_success: exit status 0 and nothing on standard error.
expect_success() {
    expect_status 0
    [[ ! -s $ERR ]] || fail "a message on standard error"
}

expect_line() {
    count_lines "$OUT" "$1"
    ((COUNT > 0)) || fail "no line '$1' on standard output"
}

expect_text() {
    [[ $(<"$OUT") == *"$1"* ]] || fail "no '$1' on standard output"
}

expect_error_text() {
    [[ $(<"$ERR") == *"$1"* ]] || fail "no '$1' on standard error"
}

expect_no_output() {
    [[ ! -s $OUT ]] || fail "something on standard output"
}

# json [OPTION...] FILTER [FILE]: jq's language, with gojq, which starts ten times as fast.
json() {
    gojq "$@"
}

# expect_json FILTER [JQ_OPTION...]: standard output is one JSON document for which FILTER is true.
expect_json() {
    local filter=$1
    shift
    json -e -s "$@" "length == 1 and (.[] | $filter)" "$OUT" >/dev/null ||
        fail "standard output is not one JSON document of which this holds: $filter ($*)"
}

expect_equal() {
    [[ $2 == "$3" ]] || fail "$1"$'\n'"  is        $2"$'\n'"  should be $3"
}

# expect_faster SECONDS: the last run took less, not counting the delay of a busy host: four starts
# of a program.
expect_faster() {
    local took=$ELAPSED
    ((took >= $1 * 1000)) || return 0
    mark
    as_user quorvanectl --version >/dev/null
    take_elapsed
    ((took < $1 * 1000 + 4 * ELAPSED)) || fail "took $took ms, more than $1 s and four starts of $ELAPSED ms"
}

# expect_received NAME PACKET [COUNT]: the base NAME received PACKET exactly COUNT times (default:
# 1).
expect_received() {
    count_packets "$1" "$2"
    ((COUNT == ${3-1})) || fail "'$1' received $COUNT times instead of ${3-1}: $2"
}

expect_writes() {
    count_packets "$1" "$menu_writes"
    expect_equal "the number of menu writes that reached '$1'" "$COUNT" "$2"
}

# expect_packets NAME COUNT: the base NAME received COUNT packets in all.
expect_packets() {
    count_packets "$1" '*'
    expect_equal "the number of packets that reached '$1'" "$COUNT" "$2"
}
