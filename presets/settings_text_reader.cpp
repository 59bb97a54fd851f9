#include <algorithm>
#include <span>
#include <string>
#include <vector>

#include "presets/setting_value.h"
#include "presets/setting_words.h"
#include "presets/settings_text.h"
#include "presets/text_words.h"
#include "protocol/menu_text.h"

namespace quorvane {
namespace {

bool startsWithDigit(std::string_view text) {
  return !text.empty() && text.front() >= '0' && text.front() <= '9';
}

// The words with "FF100" split into "FF" and "100".
std::vector<TextWord> withCodesApart(const std::vector<TextWord>& words) {
  std::vector<TextWord> result;
  result.reserve(words.size());
  for (const TextWord& word : words) {
    const std::size_t digits = word.text.find_first_of("0123456789");
    const bool isSplit = digits != std::string_view::npos && digits > 0 &&
                         TuningParameter::named(word.text.substr(0, digits));
    result.push_back(word);
    if (!isSplit) continue;
    result.back().text = word.text.substr(0, digits);
    result.push_back({word.text.substr(digits)});
  }
  return result;
}

// Reads the words from the front, and marks those that it understands.
class SettingsReader {
 public:
  explicit SettingsReader(std::string_view text)
      : words_(withCodesApart(textWords(text))), isUnderstood_(words_.size()) {}

  void read() {
    while (next_ < words_.size()) {
      const std::size_t length = settingAt(next_);
      std::fill_n(isUnderstood_.begin() + static_cast<std::ptrdiff_t>(next_), length, true);
      next_ += std::max<std::size_t>(length, 1);
    }
  }

  TuningPreset::Values takeValues() { return std::move(values_); }

  std::vector<std::string> notUnderstood() const {
    std::vector<std::string> pieces;
    for (std::size_t index = 0; index < words_.size(); ++index) {
      if (isUnderstood_[index]) continue;
      std::size_t last = index;
      while (last + 1 < words_.size() && isSamePiece(last + 1)) ++last;
      pieces.push_back(sourceOf(index, last));
      index = last;
    }
    return pieces;
  }

 private:
  // A setting with its value.
  struct Pair {
    SettingName name;
    SettingValue value;
    std::size_t first;    // index of the name's first word
    std::size_t valueAt;  // index of the value's first word
    std::size_t end;
  };

  std::span<const TextWord> from(std::size_t index) const {
    return std::span(words_).subspan(std::min(index, words_.size()));
  }

  // The number of words at an index that are a setting that counts; 0 if there is none.
  std::size_t settingAt(std::size_t index) {
    const auto pair = pairAt(index);
    if (!pair || !counts(*pair)) return 0;
    const auto [value, isNew] = values_.emplace(pair->name.parameter.code(), pair->value.value);
    if (!isNew && value->second != pair->value.value) return 0;
    return pair->end + repetitionAt(pair->end, pair->name.parameter) - index;
  }

  std::optional<Pair> pairAt(std::size_t index) const {
    const auto name = settingNameAt(from(index));
    if (!name) return std::nullopt;
    std::size_t valueAt = index + name->length;
    if (name->isCode) valueAt += titleLengthAt(valueAt, name->parameter);
    const auto value = settingValueAt(from(valueAt), name->parameter);
    if (!value) return std::nullopt;
    return Pair{*name, *value, index, valueAt, valueAt + value->length};
  }

  // The length of the setting's title at an index; 0 if there is something else.
  std::size_t titleLengthAt(std::size_t index, TuningParameter parameter) const {
    const auto name = settingNameAt(from(index));
    return name && !name->isCode && name->parameter == parameter ? name->length : 0;
  }

  // The same for a title after the value, which must have no value of its own.
  std::size_t repetitionAt(std::size_t index, TuningParameter parameter) const {
    if (index >= words_.size() || words_[index].startsLine || pairAt(index)) return 0;
    return titleLengthAt(index, parameter);
  }

  bool counts(const Pair& pair) const {
    if (pair.name.parameter == TuningParameter::slot) return false;
    if (isFromAnotherColumn(pair) || isAfterItsValue(pair)) return false;
    if (!pair.name.isCode) return countsAsTitle(pair);
    const bool mayBeProse = pair.name.parameter == TuningParameter::forceEffect;
    return !mayBeProse || (!isWithinSentence(pair.first) && !isFollowedByProse(pair.end));
  }

  bool countsAsTitle(const Pair& pair) const {
    const bool isOneWord = pair.name.length == 1;
    return !isWithinSentence(pair.first) && !(isOneWord && pair.value.isBare) &&
           isInRange({pair.name.parameter, pair.value.value}, {});
  }

  // The value is in the next line and the name is not alone in its line: the heading of a table.
  bool isFromAnotherColumn(const Pair& pair) const {
    if (words_[pair.first].startsLine) return false;
    const auto begin = words_.begin() + static_cast<std::ptrdiff_t>(pair.first) + 1;
    const auto end = words_.begin() + static_cast<std::ptrdiff_t>(pair.valueAt) + 1;
    return std::any_of(begin, end, [](const TextWord& word) { return word.startsLine; });
  }

  // "100% FF, 50% NDP": the value of FF is before it.
  bool isAfterItsValue(const Pair& pair) const {
    return isWithinSentence(pair.first) && startsWithDigit(words_[pair.first - 1].text) &&
           (words_[pair.valueAt].startsPhrase || words_[pair.valueAt].followsDash);
  }

  // Whether a word that was not understood is right before this one.
  bool isWithinSentence(std::size_t index) const {
    return index > 0 && words_[index].isAdjacent() && !isUnderstood_[index - 1];
  }

  bool isFollowedByProse(std::size_t index) const {
    return index < words_.size() && words_[index].isAdjacent() && !settingNameAt(from(index));
  }

  bool isSamePiece(std::size_t index) const {
    return !isUnderstood_[index] && !words_[index].startsPhrase;
  }

  std::string sourceOf(std::size_t first, std::size_t last) const {
    const char* const begin = words_[first].text.data();
    const char* const end = words_[last].text.data() + words_[last].text.size();
    return {begin, end};
  }

  std::vector<TextWord> words_;
  std::vector<bool> isUnderstood_;
  TuningPreset::Values values_;
  std::size_t next_ = 0;
};

}  // namespace

bool isSettingsDocument(std::string_view content) {
  constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
  if (content.starts_with(byteOrderMark)) content.remove_prefix(byteOrderMark.size());
  const std::size_t first = content.find_first_not_of(" \t\r\n");
  return first != std::string_view::npos && (content[first] == '{' || content[first] == '[');
}

SettingsInText settingsInText(std::string_view text, const std::optional<FanatecProduct>& product) {
  SettingsReader reader(text);
  reader.read();
  SettingsInText result{reader.takeValues(), {}, reader.notUnderstood()};
  TuningPreset preset;
  preset.values = result.values;
  for (const ParameterValue& value : preset.applicable(product)) {
    if (!isInRange(value, product)) result.outOfRange.push_back(value);
  }
  return result;
}

}  // namespace quorvane
