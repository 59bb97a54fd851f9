#include "presets/setting_words.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "protocol/menu_text.h"
#include "protocol/setting.h"
#include "support/text.h"

namespace quorvane {
namespace {

constexpr std::string_view inWordPunctuation = "-/'";

bool isLetterOrDigit(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

// The letters and digits in lower case: "forcefeedbackstrength". None if there is anything else but
// hyphens and slashes.
std::optional<std::string> squeezed(std::string_view text) {
  std::string result;
  for (const char c : lowerCase(text)) {
    if (isLetterOrDigit(c)) {
      result += c;
    } else if (inWordPunctuation.find(c) == std::string_view::npos) {
      return std::nullopt;
    }
  }
  return result;
}

// The same for a title or label of the menu, without blanks and brackets.
std::string squeezedLabel(std::string_view label) {
  std::string result;
  for (const char c : lowerCase(label)) {
    if (isLetterOrDigit(c)) result += c;
  }
  return result;
}

// A text for something in the menu, squeezed, and its meaning.
template <typename Meaning>
struct Phrase {
  std::string text;
  Meaning meaning;
};

// The longest of the phrases at the beginning of the words, which must be on one line, and its
// length.
template <typename Meaning>
std::optional<std::pair<Meaning, std::size_t>> longestPhrase(
    std::span<const TextWord> words, const std::vector<Phrase<Meaning>>& phrases) {
  std::optional<std::pair<Meaning, std::size_t>> longest;
  std::string text;
  for (std::size_t index = 0; index < words.size(); ++index) {
    if (index > 0 && words[index].startsLine) break;
    const auto word = squeezed(words[index].text);
    if (!word) break;
    text += *word;
    bool mayGoOn = false;
    for (const auto& [phrase, meaning] : phrases) {
      mayGoOn = mayGoOn || phrase.starts_with(text);
      if (phrase == text) longest = {meaning, index + 1};
    }
    if (!mayGoOn) break;
  }
  return longest;
}

std::vector<Phrase<TuningParameter>> allTitles() {
  std::vector<Phrase<TuningParameter>> titles;
  for (const TuningParameter parameter : TuningParameter::adjustable(std::nullopt)) {
    const std::string_view title = parameter.title();
    titles.push_back({squeezedLabel(title), parameter});
    titles.push_back({squeezedLabel(title.substr(0, title.find(" ("))), parameter});
  }
  return titles;
}

// "CbP", "CbP (clutch bite point)" and "clutch bite point"; "PEA", "PEA, Peak" and "Peak".
std::vector<Phrase<std::int64_t>> labelsOf(TuningParameter parameter) {
  const SettingInfo& setting = settingOf(parameter);
  std::vector<Phrase<std::int64_t>> labels;
  std::int64_t value = setting.range.lower;
  for (const ValueLabel& label : setting.valueLabels.labels) {
    const std::string_view choice = label.choice;
    const std::size_t end = choice.find_first_of(", ");
    labels.push_back({squeezedLabel(choice.substr(0, end)), value});
    labels.push_back({squeezedLabel(choice), value});
    if (end != std::string_view::npos) labels.push_back({squeezedLabel(choice.substr(end)), value});
    ++value;
  }
  return labels;
}

bool isUnit(std::string_view word, std::string_view unit) {
  constexpr std::array percents{"%", "percent"};
  constexpr std::array degrees{"deg", "degree", "degrees", "\u00B0"};
  const auto isWord = [&](std::string_view other) { return equalIgnoringCase(word, other); };
  if (unit == "%") return std::any_of(percents.begin(), percents.end(), isWord);
  return unit == "deg" && std::any_of(degrees.begin(), degrees.end(), isWord);
}

// With a hyphen in place of the other signs for minus.
std::string withPlainSign(std::string_view word) {
  for (const std::string_view sign : {"\u2212", "\u2013", "\u2010", "\u2011"}) {
    if (word.starts_with(sign)) return "-" + std::string(word.substr(sign.size()));
  }
  return std::string(word);
}

std::optional<SettingValue> numberAt(std::span<const TextWord> words, TuningParameter parameter) {
  const TextWord& word = words.front();
  const std::string text = withPlainSign(word.text);
  const auto number = MenuText::parseNumber(parameter, text);
  if (!number) return std::nullopt;
  if (!parseInteger(text)) return SettingValue{*number, 1, false};
  const bool hasUnit =
      words.size() > 1 && words[1].isAdjacent() && isUnit(words[1].text, parameter.unit());
  return SettingValue{*number, hasUnit ? 2U : 1U, !hasUnit};
}

bool isOff(std::string_view word, TuningParameter parameter) {
  return equalIgnoringCase(word, "off") && MenuText::hasNumbers(parameter) &&
         settingOf(parameter).range.contains(0);
}

}  // namespace

std::optional<SettingName> settingNameAt(std::span<const TextWord> words) {
  static const std::vector<Phrase<TuningParameter>> titles = allTitles();
  if (words.empty()) return std::nullopt;
  if (const auto title = longestPhrase(words, titles)) {
    return SettingName{title->first, title->second, false};
  }
  const auto coded = TuningParameter::named(words.front().text);
  return coded ? std::optional(SettingName{*coded, 1, true}) : std::nullopt;
}

std::optional<SettingValue> settingValueAt(std::span<const TextWord> words,
                                           TuningParameter parameter) {
  if (words.empty()) return std::nullopt;
  // "DRI - 3" could mean 3 or -3.
  if (words.front().followsDash && settingOf(parameter).range.lower < 0) return std::nullopt;
  if (const auto number = numberAt(words, parameter)) return number;
  if (const auto label = longestPhrase(words, labelsOf(parameter))) {
    return SettingValue{label->first, label->second, false};
  }
  if (const auto word = MenuText::parse(parameter, words.front().text)) return SettingValue{*word};
  if (isOff(words.front().text, parameter)) return SettingValue{};
  return std::nullopt;
}

}  // namespace quorvane
