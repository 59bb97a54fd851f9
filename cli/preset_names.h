#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "presets/tuning_preset.h"

namespace quorvane {

// What to do about different records with the same id and name, which no word can distinguish.
enum class Twins { refuse, takeFirst };

// The one preset that a word names. Compares, in this order: the id (in either case), the exact
// name, the name ignoring the case of ASCII letters. The prefixes "builtin:" and "mine:" restrict
// the search to the built-in presets or the user's own; if that finds nothing, the prefix counts as
// part of the name. Equal records count as one. Throws UsageError, with the words to type instead,
// if no preset or more than one matches.
const TuningPreset& presetNamed(const std::vector<TuningPreset>& presets, const std::string& which,
                                Twins twins = Twins::refuse);

// The words that name `preset` and no other of `presets`, not quoted for a shell: its name, and its
// name after "builtin:" or "mine:". For one of the user's own the last word is always its id,
// even if other records share it.
std::vector<std::string> wordsNaming(const std::vector<TuningPreset>& presets,
                                     const TuningPreset& preset);

// A line for each preset with an ambiguous name, with a word that names it alone.
std::string sharedNamesText(const std::vector<TuningPreset>& presets);

// A new preset's name, without white space at both ends. Throws UsageError if it is empty then or
// not UTF-8.
std::string presetName(const std::string& text);

// A preset's game, source or notes, without white space at both ends. Throws UsageError, which
// names the field, if it is not UTF-8.
std::string presetField(std::string_view field, const std::string& text);

}  // namespace quorvane
