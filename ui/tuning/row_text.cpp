#include "ui/tuning/row_text.h"

#include <fmt/format.h>

#include "protocol/menu_text.h"
#include "protocol/setting.h"

namespace quorvane {

bool RowState::isAuto() const {
  const auto& special = settingOf(parameter).special;
  return product && special && special->shownAs != nullptr && parameter.isSpecial(shown(), product);
}

bool RowState::isSpecial() const {
  const auto& special = settingOf(parameter).special;
  if (!special) return false;
  return special->shownAs != nullptr ? isAuto() : parameter.isSpecial(shown(), product);
}

std::string format(const RowState& row, std::int64_t value) {
  return MenuText::shortText(row.parameter, value, row.product);
}

std::int64_t ordinaryValue(const RowState& row, std::int64_t value,
                           std::optional<std::int64_t> lastOrdinary) {
  const ClosedRange range = row.parameter.amounts(row.product);
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

}  // namespace quorvane
