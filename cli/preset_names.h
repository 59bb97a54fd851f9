#pragma once

#include <string>
#include <vector>

#include "presets/tuning_preset.h"

namespace quorvane {

// What to do about different records of one id and one name, which no word tells apart.
enum class Twins { refuse, takeFirst };

// The one preset that a word names: by its id in either case, else by exactly its name, else by its
// name ignoring the case of ASCII letters. "builtin:" and "mine:" before any of them look among the
// built-in presets or the user's own alone; when nothing there answers, they belong to the name.
// Equal records count as one. Throws UsageError, with the words to type instead, when there is none
// or more than one.
const TuningPreset& presetNamed(const std::vector<TuningPreset>& presets, const std::string& which,
                                Twins twins = Twins::refuse);

// The words that name one of `presets` alone, not quoted for a shell: its name, and its name behind
// "builtin:" or "mine:". One of the user's own has its id as the last word in any case, although
// records may share it.
std::vector<std::string> wordsNaming(const std::vector<TuningPreset>& presets,
                                     const TuningPreset& preset);

// A line for each preset whose name does not name it alone, with the word that does.
std::string sharedNamesText(const std::vector<TuningPreset>& presets);

// A new preset's name without the white space around it. Throws UsageError when nothing is left and
// when it is not UTF-8.
std::string presetName(const std::string& text);

}  // namespace quorvane
