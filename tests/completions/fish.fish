# Prints what fish offers for a line. Run by tests/completions/run with fish, in a folder with one
# file.
set here (path dirname (path resolve (status filename)))
for program in quorvane quorvanectl
    source $here/../../packaging/completions/fish/$program.fish
end
for candidate in (complete -C $argv[1] | string replace -r '\t.*' '')
    if test $candidate = only.quorvane
        echo "<files>"
    else
        printf "%s\n" $candidate
    end
end
true
