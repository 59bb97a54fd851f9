#include "cli/history_text.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>

#include "protocol/menu_text.h"
#include "support/text.h"

namespace quorvane {
namespace {

constexpr std::size_t shortLength = 8;

std::string valueText(TuningParameter parameter, std::optional<std::int64_t> value,
                      const HistoryRecord& record) {
  return value ? MenuText::shortText(parameter, *value, record.product()) : "?";
}

std::string receiptText(const ValueReceipt& receipt, const HistoryRecord& record) {
  const TuningParameter parameter = receipt.parameter;
  std::string text =
      fmt::format("{} {} -> {}", parameter.code(), valueText(parameter, receipt.was, record),
                  valueText(parameter, receipt.wanted, record));
  if (receipt.error) text += ", not written";
  return text;
}

// "set 2, standard"; empty when the menu was not known.
std::string placeText(const HistoryRecord& record) {
  if (!record.menu) return "";
  return fmt::format("set {}, {}", record.menu->slot(), record.menu->modeName());
}

// What the batch tried, value by value.
std::vector<std::string> valueTexts(const HistoryRecord& record) {
  std::vector<std::string> texts;
  if (record.outcome) {
    for (const ValueReceipt& receipt : record.outcome->values) {
      texts.push_back(receiptText(receipt, record));
    }
    return texts;
  }
  for (const auto& [parameter, value] : record.wanted) {
    texts.push_back(fmt::format("{} -> {}", parameter.code(), valueText(parameter, value, record)));
  }
  return texts;
}

std::string lineOf(const HistoryRecord& record) {
  return fmt::format("{}  {}  {:<11}  {:<13}  {:<15}  {}\n", shortID(record.id),
                     localTimeText(record.time), oneLine(record.program), rawValue(record.action),
                     placeText(record), changeText(record));
}

}  // namespace

std::string shortID(const UUID& id) { return lowerCase(id.text().substr(0, shortLength)); }

std::string changeText(const HistoryRecord& record) {
  std::vector<std::string> texts = valueTexts(record);
  if (!record.detail.empty()) texts.insert(texts.begin(), oneLine(record.detail));
  if (!record.outcome) texts.emplace_back("cut short");
  if (record.outcome && record.outcome->error) texts.push_back(oneLine(*record.outcome->error));
  return fmt::format("{}", fmt::join(texts, "; "));
}

std::string historyText(const std::vector<HistoryRecord>& records) {
  std::string text;
  std::for_each(records.rbegin(), records.rend(),
                [&](const HistoryRecord& record) { text += lineOf(record); });
  return text;
}

}  // namespace quorvane
