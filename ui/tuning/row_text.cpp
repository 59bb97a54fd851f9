#include "ui/tuning/row_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <vector>

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

std::string longestFormat(const RowState& row) {
  const ClosedRange range = row.parameter.amounts(row.product);
  std::vector<std::string> texts{format(row, range.lower), format(row, range.upper)};
  const SettingInfo& setting = settingOf(row.parameter);
  if (setting.special) texts.push_back(format(row, setting.special->value));
  for (std::size_t i = 0; i < setting.valueLabels.labels.size(); ++i) {
    texts.push_back(format(row, setting.range.lower + static_cast<std::int64_t>(i)));
  }
  return *std::ranges::max_element(texts, {}, &std::string::size);
}

std::string noteOf(const RowState& row) {
  if (row.isNotTaken()) return fmt::format("Not taken · still {}", format(row, row.current));
  return row.isLeftUnsaved() ? "Still unsaved" : "";
}

std::string spokenName(const RowState& row) {
  std::string name = fmt::format("{}, {}", row.parameter.title(), format(row, row.shown()));
  if (row.staged) name += fmt::format(", was {}", format(row, row.current));
  if (row.isNotTaken()) name += fmt::format(", not taken, still {}", format(row, row.current));
  if (row.isLeftUnsaved()) name += ", still unsaved";
  return name;
}

}  // namespace quorvane
