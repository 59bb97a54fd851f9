# Tests the zsh completion, with the shell's own completion functions replaced by ones that print.
# Run by tests/completions/run with zsh.
emulate -R zsh
here=${0:A:h}
source $here/cases.sh
fpath=($here/../../packaging/completions/zsh $fpath)
autoload -Uz _quorvane _quorvanectl

compadd() {
  local -a found
  while (( $# )) && [[ $1 != -- ]]; do shift; done
  found=("${(@M)${@:2}:#${PREFIX}*}")
  (( ! $#found )) || print -rl -- $found
}
_files() { print -r -- '<files>' }

offered() {
  local -a words
  words=("${(z)1}")
  [[ $1 != *' ' ]] || words+=('')
  local -i CURRENT=$#words
  local PREFIX=$words[CURRENT]
  _$words[1]
}

run_cases
expect 'quorvanectl set ACP=' ACP=CbP ACP=CH ACP=Bt ACP=AnA
expect 'quorvanectl --layout=' --layout=sdk --layout=linux
expect 'quorvanectl presets apply Fanatec f' ''
expect 'quorvanectl presets apply mine:M' 'mine:My GT7'
expect 'quorvanectl presets apply "My GT7" ' ''
expect 'quorvane --simulate=0006' --simulate=0006
print "zsh: $cases cases, $failures failures"
(( failures == 0 ))
