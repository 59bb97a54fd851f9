# Sourced: the table of figures that the benchmarks print, and the arithmetic for it. A line is shown
# at once, and kept in the file $records when there is one: KIND|WHAT|MEASURED|UNIT|BAR|VERDICT.

heading() {  # heading: the first line of the table
  printf '%-62s %10s %-5s %-9s %s\n' "what" "measured" "unit" "bar" "verdict"
}

record() {  # record KIND WHAT MEASURED UNIT BAR VERDICT
  local IFS='|'
  [ -z "${records-}" ] || echo "$*" >>"$records"
}

group() {  # group TITLE COMMAND: the rows that follow, and what prints them alone
  record group "$1" "$2"
  printf '\n%s (%s)\n' "$1" "$2"
}

line() {  # line WHAT MEASURED UNIT BAR VERDICT
  record row "$@"
  printf '%-62s %10s %-5s %-9s %s\n' "$@"
}

bar_text() {  # bar_text [at-most|at-least BAR]
  case ${1-} in
    at-most) echo "<= $2" ;;
    at-least) echo ">= $2" ;;
  esac
}

row() {  # row WHAT MEASURED UNIT [at-most|at-least BAR]
  local measured verdict
  if [[ ! $2 =~ ^-?[0-9] ]]; then
    echo "bench: nothing was measured: $1" >&2
    exit 1
  fi
  read -r measured verdict < <(awk -v measured="$2" -v unit="$3" -v rule="${4-}" -v bar="${5-}" 'BEGIN {
    verdict = ""
    if (rule == "at-most") verdict = measured <= bar + 0 ? "ok" : "over"
    if (rule == "at-least") verdict = measured >= bar + 0 ? "ok" : "under"
    isCount = unit == "" && measured == int(measured)
    isSmall = measured > -1 && measured < 1
    printf (isCount ? "%d" : isSmall ? "%.3f" : "%.2f") " %s\n", measured, verdict
  }')
  line "$1" "$measured" "$3" "$(bar_text "${@:4}")" "$verdict"
}

absent() {  # absent WHAT WHY [at-most|at-least BAR]: a row that cannot be measured here
  line "$1" "-" "" "$(bar_text "${@:3}")" "$2"
}

remark() {  # remark TEXT: on the row above
  record remark "$1"
  printf '    %s\n' "$1"
}

divide() {  # divide A B
  awk -v a="$1" -v b="$2" 'BEGIN { print a / b }'
}

subtract() {  # subtract A B
  awk -v a="$1" -v b="$2" 'BEGIN { print a - b }'
}

median() {  # median <NUMBERS: of one number a line
  sort -n | awk '{ all[NR] = $1 } END { if (NR == 0) exit 1; print all[int((NR + 1) / 2)] }'
}

column() {  # column N KEY <LINES: the Nth word of every line whose first word is KEY
  awk -v n="$1" -v key="$2" '$1 == key { print $n }'
}

quotients() {  # quotients A B: line by line, of two lists of numbers
  paste <(printf '%s\n' "$1") <(printf '%s\n' "$2") | awk '{ print $1 / $2 }'
}

differences() {  # differences A B: line by line, of two lists of numbers
  paste <(printf '%s\n' "$1") <(printf '%s\n' "$2") | awk '{ print $1 - $2 }'
}
