# quorvanectl, run as the user at the seat unless a case says otherwise.

# become UID COMMAND...: replaces this shell; no group, no capability and a home of its own.
become() {
    local uid=$1
    shift
    export HOME="/run/quorvane/home-$uid"
    exec setpriv --reuid "$uid" --regid "$uid" --clear-groups --inh-caps=-all --no-new-privs "$@"
}

as_uid() {
    (become "$@")
}

as_user() {
    as_uid 1000 "$@"
}

show_outcome() {
    echo "  exit status $STATUS after $ELAPSED ms"
    head -c 4000 "$OUT" | sed 's/^/  stdout: /'
    head -c 2000 "$ERR" | sed 's/^/  stderr: /'
}

# run COMMAND...: leaves its exit status in STATUS, its milliseconds in ELAPSED, its output in the files OUT and ERR.
run() {
    local begin
    OUT="$work/stdout" ERR="$work/stderr" STATUS=0
    echo "\$ $*"
    begin=$(milliseconds)
    "$@" >"$OUT" 2>"$ERR" || STATUS=$?
    ELAPSED=$(($(milliseconds) - begin))
    show_outcome
}

ctl() {
    run as_user quorvanectl "$@"
}

ctl_as() {
    local uid=$1
    shift
    run as_uid "$uid" quorvanectl "$@"
}
