#include "cli/history_json.h"

namespace quorvane {
namespace {

template <typename Value>
Json orNull(const std::optional<Value>& value) {
  return value ? Json(*value) : Json(nullptr);
}

Json menuText(const std::optional<TuningSnapshot>& menu) {
  return menu ? Json(menu->hexDump()) : Json(nullptr);
}

Json valuesToJson(const std::vector<ParameterValue>& values) {
  Json list = Json::array();
  for (const auto& [parameter, value] : values) {
    list.push_back({{"parameter", parameter.code()}, {"value", value}});
  }
  return list;
}

Json outcomeJson(const std::optional<HistoryOutcome>& outcome) {
  if (!outcome) return nullptr;
  Json results = Json::array();
  for (const ValueReceipt& receipt : outcome->values) {
    results.push_back({{"parameter", receipt.parameter.code()},
                       {"was", orNull(receipt.was)},
                       {"value", receipt.wanted},
                       {"readBack", orNull(receipt.readBack)},
                       {"error", orNull(receipt.error)},
                       {"milliseconds", receipt.milliseconds}});
  }
  return {{"results", std::move(results)},
          {"error", orNull(outcome->error)},
          {"menu", menuText(outcome->menu)}};
}

}  // namespace

Json recordJson(const HistoryRecord& record) {
  const auto& menu = record.menu;
  return {{"id", record.id.text()},
          {"time", iso8601(record.time)},
          {"program", record.program},
          {"action", rawValue(record.action)},
          {"detail", record.detail.empty() ? Json(nullptr) : Json(record.detail)},
          {"reverses", record.reverses ? Json(record.reverses->text()) : Json(nullptr)},
          {"set", menu ? Json(menu->slot()) : Json(nullptr)},
          {"mode", menu ? Json(menu->modeName()) : Json(nullptr)},
          {"menu", menuText(menu)},
          {"wanted", valuesToJson(record.wanted)},
          {"outcome", outcomeJson(record.outcome)}};
}

Json writesJson(const UndoPlan& plan) { return valuesToJson(plan.writes); }

Json leftAloneJson(const UndoPlan& plan) {
  Json list = Json::array();
  for (const auto& [parameter, present, written] : plan.leftAlone) {
    list.push_back({{"parameter", parameter.code()}, {"present", present}, {"written", written}});
  }
  return list;
}

}  // namespace quorvane
