# fish completion for quorvanectl. The program itself knows what may follow: for the words given, the
# last of which is being typed, it prints lines with the word, a tab and its description; a tab and
# "files" for names of files.

function __quorvanectl_complete
    set -l earlier (commandline -opc)
    set -l typed (commandline -ct)
    # A quote that is still open, and backslashes, are not part of the word.
    set typed (string replace -r '^["\']' '' -- $typed | string replace -a '\\' '')
    test (count $typed) -gt 0; or set typed ''
    for line in (quorvanectl complete $earlier[2..-1] $typed 2>/dev/null)
        if test "$line" = \tfiles
            __fish_complete_path $typed
        else
            printf "%s\n" $line
        end
    end
end

complete -c quorvanectl -f -a '(__quorvanectl_complete)'
