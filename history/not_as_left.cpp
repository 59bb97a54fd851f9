#include "history/not_as_left.h"

#include <algorithm>
#include <iterator>

#include "history/undo_plan.h"
#include "presets/setting_value.h"

namespace quorvane {
namespace {

// Whether a record says how its set was left. A switch of the set only shows the other one.
bool leavesValues(HistoryAction action) {
  switch (action) {
    case HistoryAction::save:
    case HistoryAction::apply:
    case HistoryAction::set:
    case HistoryAction::factoryReset:
    case HistoryAction::undo:
    case HistoryAction::redo:
    case HistoryAction::wheel:
      return true;
    case HistoryAction::select:
    case HistoryAction::mode:
    case HistoryAction::rotation:
    case HistoryAction::raw:
      return false;
  }
  return false;
}

bool hasValue(const TuningSnapshot& menu, const ParameterValue& wanted,
              const std::optional<FanatecProduct>& product) {
  const std::int64_t present = menu.value(wanted.parameter, product);
  return present == wanted.value || isSameValue(wanted.parameter, present, wanted.value, product);
}

}  // namespace

std::optional<NotAsLeft> notAsLeft(const std::vector<HistoryRecord>& records,
                                   const TuningSnapshot& menu) {
  const auto last = std::find_if(records.rbegin(), records.rend(), [&](const HistoryRecord& each) {
    return leavesValues(each.action) && isOfSameSet(each, menu);
  });
  if (last == records.rend() || !last->outcome || !last->outcome->menu) return std::nullopt;
  const auto product = last->product();
  NotAsLeft result{*last, menu, {}};
  for (const TuningParameter parameter : TuningParameter::adjustable(product)) {
    const ParameterValue left{parameter, last->outcome->menu->value(parameter, product)};
    if (!hasValue(menu, left, product)) result.left.push_back(left);
  }
  return result.left.empty() ? std::nullopt : std::optional(result);
}

std::vector<ParameterValue> stillNotAsLeft(const NotAsLeft& notAsLeft, const TuningSnapshot& menu,
                                           const std::optional<FanatecProduct>& product) {
  std::vector<ParameterValue> values;
  if (!(notAsLeft.place == MenuPlace(menu))) return values;
  std::ranges::copy_if(
      notAsLeft.left, std::back_inserter(values),
      [&](const ParameterValue& value) { return !hasValue(menu, value, product); });
  return values;
}

}  // namespace quorvane
