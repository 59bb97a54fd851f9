# What a case may expect of the program that ran last, and of what reached a base.

expect_status() {
    [[ $STATUS == "$1" ]] || fail "exit status $STATUS instead of $1"
}

# expect_success: exit status 0 and no word on standard error.
expect_success() {
    expect_status 0
    [[ ! -s $ERR ]] || fail "a message on standard error"
}

expect_line() {
    grep -qxF -- "$1" "$OUT" || fail "no line '$1' on standard output"
}

expect_text() {
    grep -qF -- "$1" "$OUT" || fail "no '$1' on standard output"
}

expect_error_text() {
    grep -qF -- "$1" "$ERR" || fail "no '$1' on standard error"
}

expect_no_output() {
    [[ ! -s $OUT ]] || fail "something on standard output"
}

# expect_json FILTER [JQ_OPTION...]: standard output is one JSON document of which FILTER holds.
expect_json() {
    local filter=$1
    shift
    [[ $(jq -s length "$OUT") == 1 ]] || fail "standard output is not one JSON document"
    jq -e "$@" "$filter" "$OUT" >/dev/null || fail "does not hold: $filter ($*)"
}

expect_equal() {
    [[ $2 == "$3" ]] || fail "$1"$'\n'"  is        $2"$'\n'"  should be $3"
}

# start_up_time: how long a start of the program takes in this guest now, in milliseconds.
start_up_time() {
    local begin
    begin=$(milliseconds)
    as_user quorvanectl --version >/dev/null
    echo $(($(milliseconds) - begin))
}

# expect_faster SECONDS: what ran last took less, apart from what a busy host costs.
expect_faster() {
    local limit=$(($1 * 1000 + 4 * $(start_up_time)))
    ((ELAPSED < limit)) || fail "took $ELAPSED ms, more than $limit ms"
}

# expect_received NAME PACKET [COUNT]: the base NAME received PACKET exactly COUNT times (once).
expect_received() {
    local count
    count=$(received "$1" | grep -cxF -- "$2" || true)
    ((count == ${3-1})) || fail "'$1' received $count times instead of ${3-1}: $2"
}

expect_writes() {
    expect_equal "the number of menu writes that reached '$1'" "$(write_count "$1")" "$2"
}
