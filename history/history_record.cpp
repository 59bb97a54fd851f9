#include "history/history_record.h"

#include <algorithm>

namespace quorvane {
namespace {

constexpr std::array<std::string_view, 11> actionWords{
    "save",     "apply", "set",  "select", "mode", "factory reset",
    "rotation", "raw",   "undo", "redo",   "wheel"};
static_assert(actionWords.size() == static_cast<std::size_t>(HistoryAction::wheel) + 1);

}  // namespace

std::string_view rawValue(HistoryAction action) {
  return actionWords.at(static_cast<std::size_t>(action));
}

std::optional<HistoryAction> historyAction(std::string_view rawValue) {
  const auto* const found = std::find(actionWords.begin(), actionWords.end(), rawValue);
  if (found == actionWords.end()) return std::nullopt;
  return static_cast<HistoryAction>(found - actionWords.begin());
}

}  // namespace quorvane
