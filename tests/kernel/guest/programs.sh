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
    show_lines "$OUT" 0 100 '  stdout: %.4000s'
    show_lines "$ERR" 0 50 '  stderr: %.2000s'
}

# run COMMAND...: leaves its exit status in STATUS, its milliseconds in ELAPSED, its output in the files OUT and ERR.
run() {
    OUT="$work/stdout" ERR="$work/stderr" STATUS=0
    echo "\$ $*"
    mark
    "$@" >"$OUT" 2>"$ERR" || STATUS=$?
    take_elapsed
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
