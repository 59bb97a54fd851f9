# Tests the bash completion. Run by tests/completions/run with bash.
set -u
# shellcheck disable=SC1091
source /usr/share/bash-completion/bash_completion
here=$(dirname "$(readlink -f "$0")")
# shellcheck source=tests/completions/cases.sh
source "$here/cases.sh"
for program in quorvane quorvanectl; do
  # shellcheck disable=SC1090
  source "$here/../../packaging/completions/bash/$program"
done

# Stand-ins for the functions of the shell that completions call.
compopt() { options+=("$*"); }
_filedir() { COMPREPLY+=('<files>'); }

# Fills COMP_WORDS as the shell does: splits at white space outside quotes, and around separators.
split() {  # split LINE
  local line=$1 word="" quote="" c i
  COMP_WORDS=()
  for ((i = 0; i < ${#line}; i++)); do
    c=${line:i:1}
    if [[ -n $quote ]]; then
      word+=$c
      [[ $c != "$quote" ]] || quote=""
    elif [[ $c == \\ ]]; then
      i=$((i + 1))
      word+=$c${line:i:1}
    elif [[ $c == [\"\'] ]]; then
      quote=$c word+=$c
    elif [[ $c == ' ' ]]; then
      [[ -z $word ]] || COMP_WORDS+=("$word")
      word=""
    elif [[ $c == [=:] ]]; then
      [[ -z $word ]] || COMP_WORDS+=("$word")
      COMP_WORDS+=("$c") word=""
    else
      word+=$c
    fi
  done
  [[ -z $word && $line != *' ' ]] || COMP_WORDS+=("$word")
}

offered() {
  COMP_LINE=$1 COMP_POINT=${#1} COMPREPLY=() options=()
  split "$1"
  COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
  "_${COMP_WORDS[0]}"
  local word
  for word in "${COMPREPLY[@]}"; do
    # Removes quoting, as the shell would from the inserted text.
    [[ $word == '<files>' || $1 == *[\"\']* ]] || eval "word=$word"
    printf '%s\n' "$word"
  done
  [[ " ${options[*]} " != *" -o nospace "* || ${COMPREPLY[*]} == *=* ]] || echo '<no space>'
}

run_cases
# In bash the word begins after a separator.
expect 'quorvanectl set ACP=' CbP CH Bt AnA
expect 'quorvanectl set acp=C' CbP CH
expect 'quorvanectl --layout=' sdk linux
expect 'quorvanectl presets apply "Fanatec f' 'Fanatec factory defaults'
expect 'quorvanectl presets apply Fanatec\ f' 'Fanatec factory defaults'
expect 'quorvanectl presets apply mine:M' 'My GT7'
expect 'quorvanectl presets apply "My GT7" ' ''
expect 'quorvane --simulate=0006' 0006
echo "bash: $cases cases, $failures failures"
[ "$failures" -eq 0 ]
