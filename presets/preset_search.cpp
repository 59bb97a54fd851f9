#include "presets/preset_search.h"

#include <algorithm>

#include "presets/setting_value.h"
#include "protocol/menu_text.h"
#include "support/text.h"

namespace quorvane {
namespace {

constexpr std::string_view wordBreaks = " \t\n\v\f\r";

std::vector<std::string> searchWords(std::string_view text) {
  std::vector<std::string> words;
  std::size_t begin = text.find_first_not_of(wordBreaks);
  while (begin != std::string_view::npos) {
    const std::size_t end = std::min(text.find_first_of(wordBreaks, begin), text.size());
    words.emplace_back(text.substr(begin, end - begin));
    begin = text.find_first_not_of(wordBreaks, end);
  }
  return words;
}

std::string_view withoutOuterSpace(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(wordBreaks);
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(wordBreaks) - begin + 1);
}

}  // namespace

PresetSearch::PresetSearch(std::string_view text) {
  const std::vector<std::string> words = searchWords(text);
  for (std::size_t i = 0; i < words.size(); ++i) {
    switch (readValue(words[i], i + 1 < words.size() ? words[i + 1] : std::string())) {
      case Reading::noValue:
        words_.push_back(foldedCase(words[i]));
        break;
      case Reading::value:
        break;
      case Reading::valueAndUnit:
        ++i;
        break;
    }
  }
}

PresetSearch::Reading PresetSearch::readValue(const std::string& word, const std::string& next) {
  const std::size_t equals = word.find('=');
  if (equals == std::string::npos) return Reading::noValue;
  const auto parameter = TuningParameter::named(word.substr(0, equals));
  if (!parameter) return Reading::noValue;
  const std::string value = word.substr(equals + 1);
  if (value.empty()) {
    values_.push_back({*parameter, std::nullopt});
    return Reading::value;
  }
  const auto parsed = MenuText::parse(*parameter, value);
  if (!parsed) return Reading::noValue;
  values_.push_back({*parameter, *parsed});
  const bool isUnit = !next.empty() && MenuText::parseNumber(*parameter, value + " " + next);
  return isUnit ? Reading::valueAndUnit : Reading::value;
}

std::vector<TuningParameter> PresetSearch::parameters() const {
  std::vector<TuningParameter> parameters;
  parameters.reserve(values_.size());
  for (const WantedValue& wanted : values_) parameters.push_back(wanted.parameter);
  return parameters;
}

bool PresetSearch::matches(const TuningPreset& preset) const {
  const bool hasValues =
      std::all_of(values_.begin(), values_.end(), [&](const WantedValue& wanted) {
        const auto value = preset.value(wanted.parameter);
        if (!value || !wanted.value) return value.has_value();
        // Equal values need not be in range.
        return *value == *wanted.value ||
               isSameValue(wanted.parameter, *value, *wanted.value, std::nullopt);
      });
  if (!hasValues) return false;
  // The words that no text before had. Most presets show in their name whether they match.
  std::vector<std::u32string_view> missing(words_.begin(), words_.end());
  for (const std::string* const text :
       {&preset.name, &preset.game, &preset.source, &preset.notes}) {
    if (missing.empty()) break;
    const std::u32string folded = foldedCase(*text);
    std::erase_if(missing, [&](std::u32string_view word) {
      return folded.find(word) != std::u32string::npos;
    });
  }
  return missing.empty();
}

bool isForGame(const TuningPreset& preset, std::string_view game) {
  return foldedCase(withoutOuterSpace(preset.game)) == foldedCase(withoutOuterSpace(game));
}

}  // namespace quorvane
