#include "cli/assignments.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

#include "cli/context.h"
#include "cli/suggestion.h"
#include "presets/setting_value.h"
#include "protocol/error.h"
#include "protocol/menu_text.h"
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
  for (const std::string& word : MenuText::words(parameter)) text += " or " + word;
  return text;
}

// The parts of "FF+=5".
struct AssignmentParts {
  std::string code;
  char sign = 0;  // '+' or '-' before "="; 0 without
  std::string value;
};

AssignmentParts partsOf(const std::string& word) {
  const std::size_t equals = word.find('=');
  if (equals == std::string::npos) {
    throw UsageError(
        fmt::format("\"{}\" is not of the form CODE=VALUE, such as FF=80", oneLine(word)));
  }
  AssignmentParts parts{word.substr(0, equals), 0, word.substr(equals + 1)};
  if (parts.code.ends_with('+') || parts.code.ends_with('-')) {
    parts.sign = parts.code.back();
    parts.code.pop_back();
  }
  return parts;
}

// Throws for "+5", which is ambiguous: an increase by 5, or the value 5.
void refusePlus(TuningParameter parameter, const std::string& text) {
  if (!text.starts_with('+') || !MenuText::hasNumbers(parameter)) return;
  const auto number = MenuText::parseNumber(parameter, text.substr(1));
  if (!number || *number < 0) return;
  throw UsageError(
      fmt::format("\"{0}={1}\" could mean two things. For {2} more: {0}+={2}; for the "
                  "value {2}: {0}={2}",
                  parameter.code(), oneLine(text), *number));
}

std::int64_t valueOf(TuningParameter parameter, const std::string& text) {
  refusePlus(parameter, text);
  const auto value = MenuText::parse(parameter, text);
  if (value) return *value;
  throw UsageError(fmt::format("\"{}\" is no value for {}: give a whole number{}", oneLine(text),
                               parameter.code(), wordsOf(parameter)));
}

// The number to add, with its sign.
std::int64_t changeOf(TuningParameter parameter, const AssignmentParts& parts) {
  const std::string typed = fmt::format("{}{}={}", parameter.code(), parts.sign, parts.value);
  if (!MenuText::hasNumbers(parameter)) {
    throw UsageError(fmt::format("\"{}\": the values of {} are words, with nothing to add to{}",
                                 oneLine(typed), parameter.code(),
                                 ":" + wordsOf(parameter).substr(3)));
  }
  const auto number = MenuText::parseNumber(parameter, parts.value);
  if (!number || *number < 0) {
    throw UsageError(fmt::format("\"{}\" is no number to add or take away: {}{}={} would be one",
                                 oneLine(parts.value), parameter.code(), parts.sign,
                                 parameter.step()));
  }
  if (*number % parameter.step() != 0) {
    throw UsageError(fmt::format("{0} goes in steps of {1}: \"{2}\" is no step, {0}{3}={1} is one",
                                 parameter.code(), parameter.step(), oneLine(typed), parts.sign));
  }
  return parts.sign == '-' ? -*number : *number;
}

Assignment parseAssignment(const std::string& word) {
  const AssignmentParts parts = partsOf(word);
  const TuningParameter parameter = settingNamed(parts.code);
  if (parts.sign == 0) return {parameter, valueOf(parameter, parts.value), false};
  return {parameter, changeOf(parameter, parts), true};
}

std::vector<Assignment> parseEach(const std::vector<std::string>& words) {
  std::vector<Assignment> assignments;
  for (const std::string& word : words) {
    const Assignment next = parseAssignment(word);
    for (const Assignment& earlier : assignments) {
      if (earlier.parameter == next.parameter) {
        throw UsageError(fmt::format("{} is given twice", next.parameter.code()));
      }
    }
    assignments.push_back(next);
  }
  return assignments;
}

// Returns the words if they are valid, else none.
std::vector<std::string> accepted(std::vector<std::string> words) {
  try {
    parseEach(words);
    return words;
  } catch (const UsageError&) {
    return {};
  }
}

}  // namespace

TuningParameter settingNamed(const std::string& code) {
  if (const auto parameter = TuningParameter::named(code)) return *parameter;
  std::vector<std::string> codes;
  for (const TuningParameter each : TuningParameter::allCases()) codes.emplace_back(each.code());
  const auto near = nearestWord(code, codes);
  throw UsageError(
      fmt::format("There is no setting \"{}\". The codes are {}", oneLine(code), codeList()),
      near ? std::vector<std::string>{*near} : std::vector<std::string>());
}

std::vector<Assignment> parseAssignments(const std::vector<std::string>& words) {
  std::vector<Assignment> assignments;
  try {
    assignments = parseEach(words);
  } catch (const UsageError& error) {
    throw UsageError(error.what(), accepted(likelyAssignments(words)));
  }
  std::sort(assignments.begin(), assignments.end(), [](const Assignment& a, const Assignment& b) {
    return a.parameter.offset() < b.parameter.offset();
  });
  return assignments;
}

std::vector<Assignment> assignmentsOf(const std::vector<ParameterValue>& values) {
  std::vector<Assignment> assignments;
  std::transform(values.begin(), values.end(), std::back_inserter(assignments),
                 [](const ParameterValue& value) {
                   return Assignment{value.parameter, value.value, false};
                 });
  return assignments;
}

std::string assignmentText(const Assignment& assignment) {
  const std::string_view code = assignment.parameter.code();
  if (!assignment.isRelative) return fmt::format("{}={}", code, assignment.number);
  const bool isLess = assignment.number < 0;
  return fmt::format("{}{}={}", code, isLess ? '-' : '+',
                     isLess ? -assignment.number : assignment.number);
}

WantedValue wantedValue(const Assignment& assignment, const TuningSnapshot& menu,
                        const std::optional<FanatecProduct>& product) {
  const TuningParameter parameter = assignment.parameter;
  if (!assignment.isRelative) return {assignment.number, {}};
  if (!isOnMenu(parameter, product)) {
    return {std::nullopt,
            FanatecError::notAvailable(parameter, std::string(product->name)).errorDescription()};
  }
  const std::int64_t present = menu.settingValue(parameter, product);
  if (const auto label = parameter.label(present, product)) {
    return {std::nullopt, fmt::format("{} is {} now, which is no number to change; give the value "
                                      "itself",
                                      parameter.code(), *label)};
  }
  const ClosedRange range = parameter.amounts(product);
  const std::int64_t change = assignment.number;
  const bool isLess = change < 0;
  if (isLess ? change < range.lower - present : change > range.upper - present) {
    return {std::nullopt,
            fmt::format("{} is {} now; {} {} would be outside {}...{}", parameter.code(),
                        MenuText::text(parameter, present, product), isLess ? -change : change,
                        isLess ? "less" : "more", range.lower, range.upper)};
  }
  return {present + change, {}};
}

}  // namespace quorvane
