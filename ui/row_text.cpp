#include "ui/row_text.h"

#include <fmt/format.h>

#include <algorithm>

namespace quorvane {
namespace {

constexpr std::int64_t automatic = 0;
constexpr std::int64_t brakeLevelOff = 101;

bool isPlainNumber(TuningParameter parameter) {
  switch (parameter) {
    case TuningParameter::slot:
    case TuningParameter::forceFeedbackScaling:
    case TuningParameter::driftMode:
    case TuningParameter::analogPaddles:
    case TuningParameter::interpolation:
      return true;
    default:
      return false;
  }
}

}  // namespace

bool RowState::isAuto() const {
  return parameter == TuningParameter::sensitivity && product &&
         (shown() == product->autoRotation || shown() == automatic);
}

bool RowState::isSpecial() const {
  return isAuto() ||
         (parameter == TuningParameter::brakeLevelIndicator && shown() == brakeLevelOff);
}

std::vector<TuningParameter> listedParameters(const std::optional<FanatecProduct>& product) {
  std::vector<TuningParameter> parameters = TuningParameter::available(product);
  std::erase(parameters, TuningParameter(TuningParameter::slot));
  return parameters;
}

std::string valueWord(const RowState& row, std::int64_t value) {
  if (row.parameter == TuningParameter::sensitivity && value == automatic) return "AUT";
  if (const auto label = row.parameter.label(value, row.product)) {
    return std::string(label->substr(0, label->find(' ')));
  }
  return {};
}

std::string unitOf(TuningParameter parameter) {
  if (isPlainNumber(parameter)) return {};
  return parameter == TuningParameter::sensitivity ? "deg" : "%";
}

std::string format(const RowState& row, std::int64_t value) {
  if (std::string word = valueWord(row, value); !word.empty()) return word;
  const std::string unit = unitOf(row.parameter);
  return unit.empty() ? fmt::format("{}", value) : fmt::format("{} {}", value, unit);
}

std::string switchWord(TuningParameter parameter) {
  if (parameter == TuningParameter::sensitivity) return "AUTO";
  if (parameter == TuningParameter::brakeLevelIndicator) return "OFF";
  return {};
}

std::int64_t specialValue(TuningParameter parameter) {
  return parameter == TuningParameter::sensitivity ? automatic : brakeLevelOff;
}

bool hasSpecialValue(TuningParameter parameter, const std::optional<FanatecProduct>& product) {
  if (parameter == TuningParameter::brakeLevelIndicator) return true;
  return parameter == TuningParameter::sensitivity && (!product || product->autoRotation > 0);
}

ClosedRange sliderRange(TuningParameter parameter, const std::optional<FanatecProduct>& product) {
  ClosedRange range = parameter.allowedRange(product);
  if (parameter == TuningParameter::brakeLevelIndicator) range.upper = brakeLevelOff - 1;
  return range;
}

std::int64_t ordinaryValue(const RowState& row, std::int64_t value,
                           std::optional<std::int64_t> lastOrdinary) {
  const ClosedRange range = sliderRange(row.parameter, row.product);
  if (range.contains(value)) return value;
  if (range.contains(row.current)) return row.current;
  if (lastOrdinary && range.contains(*lastOrdinary)) return *lastOrdinary;
  return range.upper;
}

std::string spokenName(const RowState& row) {
  std::string name = fmt::format("{}, {}", row.parameter.title(), format(row, row.shown()));
  if (row.staged) name += fmt::format(", was {}", format(row, row.current));
  return name;
}

std::string rangeText(TuningParameter parameter, const std::optional<FanatecProduct>& product) {
  const ClosedRange range = sliderRange(parameter, product);
  const std::string unit = unitOf(parameter);
  return fmt::format("{} to {}{}{}, step {}", range.lower, range.upper, unit.empty() ? "" : " ",
                     unit, parameter.step());
}

}  // namespace quorvane
