#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "presets/tuning_preset.h"

namespace quorvane {

// A search of presets by typed text. A preset matches if it has every word of the text in its name,
// game, source or notes, ignoring case. A word such as "FF=80", "SEN=AUTO" or "SEN=900 deg"
// compares a value instead: a code in either case, "=", and a value as MenuText::parse() takes it.
// "FF=" asks only for any value of the setting. Every preset matches a text without words.
class PresetSearch {
 public:
  // Any text; bytes that are not UTF-8 match only themselves.
  explicit PresetSearch(std::string_view text);

  bool matches(const TuningPreset& preset) const;

  // The words to find in the texts, in lower case, and the settings whose values are compared.
  const std::vector<std::u32string>& words() const { return words_; }
  std::vector<TuningParameter> parameters() const;

 private:
  struct WantedValue {
    TuningParameter parameter = TuningParameter::slot;
    std::optional<std::int64_t> value;  // none: any
  };

  // Whether `word` asks for a value; `next` is the word after it, which may be its unit.
  enum class Reading { noValue, value, valueAndUnit };
  Reading readValue(const std::string& word, const std::string& next);

  std::vector<std::u32string> words_;  // in folded case
  std::vector<WantedValue> values_;
};

// Whether the preset is for this game, ignoring case and white space at both ends. An empty name
// stands for presets without a game.
bool isForGame(const TuningPreset& preset, std::string_view game);

}  // namespace quorvane
