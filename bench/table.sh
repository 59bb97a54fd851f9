# Sourced: the table of figures that the benchmarks print, and the arithmetic for it.

heading() {  # heading: the first line of the table
  printf '%-58s %10s %-5s %-9s %s\n' "what" "measured" "unit" "bar" "verdict"
}

row() {  # row WHAT MEASURED UNIT [at-most|at-least BAR]
  awk -v what="$1" -v measured="$2" -v unit="$3" -v rule="${4-}" -v bar="${5-}" 'BEGIN {
    verdict = ""; wanted = ""
    if (rule == "at-most") { wanted = "<= " bar; verdict = measured <= bar + 0 ? "ok" : "over" }
    if (rule == "at-least") { wanted = ">= " bar; verdict = measured >= bar + 0 ? "ok" : "over" }
    printf "%-58s %10.2f %-5s %-9s %s\n", what, measured, unit, wanted, verdict
  }'
}

divide() {  # divide A B
  awk -v a="$1" -v b="$2" 'BEGIN { print a / b }'
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
