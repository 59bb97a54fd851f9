# Sourced by bench/run: comparing, loading and saving presets.

group "Presets" "$command"

benchmark presets_bench
row "loading 20 presets beyond reading their file" \
  "$(divide "$(figure loadUsualPresets beyond_read_ns)" 1000000)" ms at-most 0.1
row "  the JSON library's parse of the same text alone" \
  "$(divide "$(figure loadUsualPresets parse_ns)" 1000000)" ms
row "decoding 10,000 presets" "$(divide "$(figure decodeManyPresets decode_ns)" 1000000)" ms
row "  / the JSON library's parse alone" "$(figure decodeManyPresets decode_ratio)" x at-most 2
row "encoding 10,000 presets" "$(divide "$(figure encodeManyPresets encode_ns)" 1000000)" ms
row "  / the JSON library's dump alone" "$(figure encodeManyPresets encode_ratio)" x at-most 1.5
row "comparing two sides of 16 settings" \
  "$(divide "$(figure compareTwoSides compare_ns)" 1000)" us at-most 50

# The first save makes the directories too, and the second that of the former versions.
save_preset() {  # save_preset NAME [COMMAND...]
  "${@:2}" "$bin/quorvanectl" --simulate presets save "$1" >"$scratch/output" 2>&1
}
if command -v strace >/dev/null; then
  save_preset first
  save_preset second
  save_preset third \
    strace -f -qq -o "$scratch/calls" -e trace=fsync,fdatasync,rename,renameat,renameat2
  row "syncs of a save and its former version" "$(grep -cE 'f(data)?sync\(' "$scratch/calls")" \
    "" at-most 4
  row "renames of a save and its former version" "$(grep -cE 'rename(at2?)?\(' "$scratch/calls")" \
    "" at-most 2
else
  absent "syncs of a save and its former version" "no strace" at-most 4
  absent "renames of a save and its former version" "no strace" at-most 2
fi
