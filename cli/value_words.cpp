#include "cli/value_words.h"

#include <fmt/format.h>

#include <algorithm>

#include "cli/context.h"
#include "support/text.h"

namespace quorvane {
namespace {

std::string codeList() {
  std::string list;
  for (const TuningParameter parameter : TuningParameter::allCases()) {
    if (!list.empty()) list += ", ";
    list += parameter.code();
  }
  return list;
}

// The words that a parameter takes besides numbers, for messages.
std::string wordsOf(TuningParameter parameter) {
  std::string text;
  for (const std::string& word : valueWords(parameter)) text += " or " + word;
  return text;
}

ParameterValue parseAssignment(const std::string& word) {
  const std::size_t equals = word.find('=');
  if (equals == std::string::npos) {
    throw UsageError(
        fmt::format("\"{}\" is not of the form CODE=VALUE, such as FF=80", oneLine(word)));
  }
  const std::string code = word.substr(0, equals);
  const auto parameter = TuningParameter::named(code);
  if (!parameter) {
    throw UsageError(
        fmt::format("There is no setting \"{}\". The codes are {}", oneLine(code), codeList()));
  }
  const std::string text = word.substr(equals + 1);
  const auto value = parseValueWord(*parameter, text);
  if (!value) {
    throw UsageError(fmt::format("\"{}\" is no value for {}: give a whole number{}", oneLine(text),
                                 parameter->code(), wordsOf(*parameter)));
  }
  return {*parameter, *value};
}

}  // namespace

std::vector<std::string> valueWords(TuningParameter parameter) {
  if (parameter == TuningParameter::sensitivity) return {"AUTO"};
  std::vector<std::string> words;
  const ClosedRange range = parameter.allowedRange(std::nullopt);
  for (std::int64_t value = range.lower; value <= range.upper; ++value) {
    if (const auto label = parameter.label(value, std::nullopt)) {
      words.emplace_back(label->substr(0, label->find(' ')));
    }
  }
  return words;
}

std::optional<std::int64_t> parseValueWord(TuningParameter parameter, std::string_view word) {
  if (const auto number = parseInteger(word)) return number;
  if (parameter == TuningParameter::sensitivity) {
    if (equalIgnoringCase(word, "AUTO") || equalIgnoringCase(word, "AUT")) return 0;
    return std::nullopt;
  }
  const ClosedRange range = parameter.allowedRange(std::nullopt);
  for (std::int64_t value = range.lower; value <= range.upper; ++value) {
    const auto label = parameter.label(value, std::nullopt);
    if (label && equalIgnoringCase(label->substr(0, label->find(' ')), word)) return value;
  }
  return std::nullopt;
}

std::vector<ParameterValue> parseAssignments(const std::vector<std::string>& words) {
  std::vector<ParameterValue> assignments;
  for (const std::string& word : words) {
    const ParameterValue next = parseAssignment(word);
    for (const ParameterValue& earlier : assignments) {
      if (earlier.parameter == next.parameter) {
        throw UsageError(fmt::format("{} is given twice", next.parameter.code()));
      }
    }
    assignments.push_back(next);
  }
  std::sort(assignments.begin(), assignments.end(),
            [](const ParameterValue& a, const ParameterValue& b) {
              return a.parameter.offset() < b.parameter.offset();
            });
  return assignments;
}

std::string valueText(TuningParameter parameter, std::int64_t value,
                      const std::optional<FanatecProduct>& product) {
  if (const auto label = parameter.label(value, product)) return std::string(*label);
  if (parameter.unit().empty()) return std::to_string(value);
  return fmt::format("{} {}", value, parameter.unit());
}

}  // namespace quorvane
