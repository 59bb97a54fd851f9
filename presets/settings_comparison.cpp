#include "presets/settings_comparison.h"

#include <set>
#include <utility>

#include "presets/setting_value.h"
#include "protocol/menu_text.h"
#include "support/invariant.h"

namespace quorvane {
namespace {

std::optional<std::int64_t> valueOf(const TuningPreset::Values& values, std::string_view code) {
  const auto found = values.find(code);
  return found == values.end() ? std::nullopt : std::optional(found->second);
}

ComparedState stateOf(const ComparedRow& row, const std::optional<FanatecProduct>& product) {
  if (!row.parameter || !isOnMenu(*row.parameter, product)) return ComparedState::notOnBase;
  const auto isWrong = [&](const std::optional<std::int64_t>& value) {
    return value && !isInRange({*row.parameter, *value}, product);
  };
  if (isWrong(row.left) || isWrong(row.right)) return ComparedState::outOfRange;
  if (!row.right) return ComparedState::onlyLeft;
  if (!row.left) return ComparedState::onlyRight;
  const bool isSame = isSameValue(*row.parameter, *row.left, *row.right, product);
  return isSame ? ComparedState::same : ComparedState::differs;
}

// The codes on either side that no setting has.
std::set<std::string_view> otherCodes(const TuningPreset::Values& left,
                                      const TuningPreset::Values& right) {
  std::set<std::string_view> codes;
  for (const auto* const side : {&left, &right}) {
    for (const auto& [code, value] : *side) {
      if (!TuningParameter::fromRawValue(code)) codes.insert(code);
    }
  }
  return codes;
}

}  // namespace

std::string_view rawValue(ComparedState state) {
  switch (state) {
    case ComparedState::same:
      return "same";
    case ComparedState::differs:
      return "differs";
    case ComparedState::onlyLeft:
      return "onlyLeft";
    case ComparedState::onlyRight:
      return "onlyRight";
    case ComparedState::outOfRange:
      return "outOfRange";
    case ComparedState::notOnBase:
      return "notOnBase";
  }
  invariantFailed("a compared row has no state");
}

std::string_view ComparedRow::title() const { return parameter ? parameter->title() : ""; }

std::optional<std::int64_t> ComparedRow::change(
    const std::optional<FanatecProduct>& product) const {
  if (state != ComparedState::differs) return std::nullopt;
  const bool hasWord = !MenuText::word(*parameter, *left, product).empty() ||
                       !MenuText::word(*parameter, *right, product).empty();
  return hasWord ? std::nullopt : std::optional(*right - *left);
}

SettingsComparison::SettingsComparison(const TuningPreset::Values& left,
                                       const TuningPreset::Values& right,
                                       const std::optional<FanatecProduct>& product)
    : stronger_(strengthRaised(left, right, product)) {
  rows_.reserve(TuningParameter::count);
  const auto addCode = [&](std::string_view code, std::optional<TuningParameter> parameter) {
    ComparedRow row{std::string(code), parameter, valueOf(left, code), valueOf(right, code)};
    if (!row.left && !row.right) return;
    row.state = stateOf(row, product);
    add(std::move(row));
  };
  for (const TuningParameter parameter : TuningParameter::allCases()) {
    if (parameter != TuningParameter::slot) addCode(parameter.code(), parameter);
  }
  for (const std::string_view code : otherCodes(left, right)) addCode(code, std::nullopt);
}

void SettingsComparison::add(ComparedRow row) {
  ++counts_.at(static_cast<std::size_t>(row.state));
  rows_.push_back(std::move(row));
}

}  // namespace quorvane
