# fish completion for quorvane. Both programs name devices and products alike.

function __quorvane_from_quorvanectl
    quorvanectl complete $argv[1] 2>/dev/null | string replace -- $argv[1] ''
end

complete -c quorvane -l device -x -a '(__quorvane_from_quorvanectl --device=)' -d 'Connect to the base with this id, device node or serial number'
complete -c quorvane -l simulate -f -d 'Use a simulated base'
complete -c quorvane -f -n 'string match -q -- "--simulate=*" (commandline -ct)' -a '(quorvanectl complete --simulate= 2>/dev/null)'
complete -c quorvane -l simulate-state -r -d 'Keep what the simulated base is set to in a file'
complete -c quorvane -l transcript -r -d 'Write what the simulated base was sent to a file'
complete -c quorvane -l version -d 'Print version and commit'
complete -c quorvane -s h -l help -d 'Print help'
