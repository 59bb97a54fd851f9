# Sourced: the table of figures as Markdown, in the document that holds it.

begin_mark='<!-- figures: begin -->'
end_mark='<!-- figures: end -->'

# Fails, with the reason, when the document has no place for the table.
require_marks() {  # require_marks DOCUMENT
  if [ "$(grep -xF -e "$begin_mark" -e "$end_mark" "$1")" != "$begin_mark"$'\n'"$end_mark" ]; then
    echo "run: $1 needs a line '$begin_mark', and below it a line '$end_mark'" >&2
    return 1
  fi
}

processor() {
  sed -n 's/^model name[[:space:]]*: *//p' /proc/cpuinfo | head -n 1
}

system_name() {
  if [ -r /etc/debian_version ]; then
    echo "Debian $(cat /etc/debian_version)"
  else
    (. /etc/os-release && echo "$PRETTY_NAME")
  fi
}

commit() {
  local name
  name=$(git rev-parse --short HEAD 2>/dev/null) || { echo "a tree without history"; return; }
  git diff --quiet HEAD -- ':!docs/performance.md' 2>/dev/null || name+=" with changes"
  echo "commit $name"
}

# The kernel's version without what its builder added to it.
circumstances() {  # circumstances HOW
  local release model
  release=$(uname -r)
  model=$(processor)
  printf 'Measured on %s at %s, by %s: %s, %s processors, Linux %s, %s.\n' "$(date -u +%F)" \
    "$(commit)" "$1" "${model:-$(uname -m)}" "$(nproc)" "${release%%-*}" "$(system_name)"
}

markdown_table() {  # markdown_table RECORDS
  awk -F '|' '
    BEGIN {
      print "| what | measured | bar | verdict |"
      print "|---|---:|---|---|"
    }
    { what = $2 }
    $1 == "row" { sub(/^  /, "\\&emsp;", what) }
    $1 == "group" { printf "| **%s**, `%s` | | | |\n", what, $3 }
    $1 == "row" {
      bar = $5
      sub(/^<=/, "≤", bar)
      sub(/^>=/, "≥", bar)
      printf "| %s | %s | %s | %s |\n", what, $3 ($4 == "" ? "" : " " $4), bar, $6
    }
    $1 == "remark" { printf "| &emsp;*%s* | | | |\n", what }' "$1"
}

# Replaces what stands between the marks. CIRCUMSTANCES is a sentence above the table.
write_document() {  # write_document DOCUMENT RECORDS CIRCUMSTANCES
  local figures=$2.md
  { printf '\n%s\n\n' "$3" && markdown_table "$2" && echo; } >"$figures"
  awk -v begin="$begin_mark" -v end="$end_mark" -v figures="$figures" '
    $0 == begin {
      print
      while ((getline text < figures) > 0) print text
      inside = 1
    }
    $0 == end { inside = 0 }
    !inside && $0 != begin' "$1" >"$figures.document"
  cat "$figures.document" >"$1"
}
