#include "history/history_coding.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "support/bytes.h"

namespace quorvane {
namespace {

// Keeps the order of keys.
using HistoryJSON = nlohmann::ordered_json;

std::string lineOf(const HistoryJSON& json) {
  return json.dump(-1, ' ', false, HistoryJSON::error_handler_t::replace) + '\n';
}

HistoryJSON valuesJSON(const std::vector<ParameterValue>& values) {
  HistoryJSON json = HistoryJSON::object();
  for (const auto& [parameter, value] : values) json[std::string(parameter.code())] = value;
  return json;
}

HistoryJSON menuValuesJSON(const TuningSnapshot& menu,
                           const std::optional<FanatecProduct>& product) {
  HistoryJSON json = HistoryJSON::object();
  for (const TuningParameter parameter : TuningParameter::adjustable(product)) {
    json[std::string(parameter.code())] = menu.value(parameter, product);
  }
  return json;
}

HistoryJSON receiptToJSON(const ValueReceipt& receipt) {
  HistoryJSON json{{"parameter", receipt.parameter.code()}};
  if (receipt.was) json["was"] = *receipt.was;
  json["wanted"] = receipt.wanted;
  if (receipt.readBack) json["readBack"] = *receipt.readBack;
  json["milliseconds"] = receipt.milliseconds;
  if (receipt.error) json["error"] = *receipt.error;
  return json;
}

// Throw HistoryJSON::exception for a value of another type.
template <typename Value>
std::optional<Value> optionalIn(const HistoryJSON& json, const char* key) {
  const auto found = json.find(key);
  if (found == json.end()) return std::nullopt;
  return found->get<Value>();
}

std::optional<UUID> uuidIn(const HistoryJSON& json, const char* key) {
  const auto text = optionalIn<std::string>(json, key);
  return text ? UUID::parse(*text) : std::nullopt;
}

std::optional<TuningSnapshot> menuIn(const HistoryJSON& json, WallSeconds time) {
  const auto text = optionalIn<std::string>(json, "menu");
  const auto bytes = text ? parseHexBytes(*text) : std::nullopt;
  return bytes ? TuningSnapshot::fromReport(*bytes, time) : std::nullopt;
}

// Skips unknown codes, as of a later version.
std::vector<ParameterValue> valuesIn(const HistoryJSON& json) {
  std::vector<ParameterValue> values;
  for (const auto& [code, value] : json.items()) {
    const auto parameter = TuningParameter::fromRawValue(code);
    if (parameter) values.push_back({*parameter, value.get<std::int64_t>()});
  }
  return values;
}

std::vector<ValueReceipt> receiptsIn(const HistoryJSON& json) {
  std::vector<ValueReceipt> receipts;
  for (const HistoryJSON& entry : json) {
    const auto parameter = TuningParameter::fromRawValue(entry.at("parameter").get<std::string>());
    if (!parameter) continue;
    receipts.push_back(
        {*parameter, optionalIn<std::int64_t>(entry, "was"), entry.at("wanted").get<std::int64_t>(),
         optionalIn<std::int64_t>(entry, "readBack"), entry.at("milliseconds").get<std::int64_t>(),
         optionalIn<std::string>(entry, "error")});
  }
  return receipts;
}

// None for a record that lacks what every record has, or with an unknown action.
std::optional<HistoryRecord> recordIn(const HistoryJSON& json) {
  const auto id = uuidIn(json, "id");
  const auto time = parseISO8601(json.at("time").get<std::string>());
  const auto action = historyAction(json.at("action").get<std::string>());
  if (!id || !time || !action) return std::nullopt;
  HistoryRecord record;
  record.id = *id;
  record.time = *time;
  record.program = json.at("program").get<std::string>();
  record.base = json.at("base").get<std::string>();
  record.productID = json.at("productID").get<std::int64_t>();
  record.action = *action;
  record.detail = optionalIn<std::string>(json, "detail").value_or("");
  record.reverses = uuidIn(json, "reverses");
  record.menu = menuIn(json, *time);
  if (const auto wanted = json.find("wanted"); wanted != json.end()) {
    record.wanted = valuesIn(*wanted);
  }
  return record;
}

HistoryOutcome outcomeIn(const HistoryJSON& json, WallSeconds time) {
  return {receiptsIn(json.at("results")), optionalIn<std::string>(json, "error"),
          menuIn(json, time)};
}

// Collects the records line by line.
class HistoryDecoder {
 public:
  void take(std::string_view line) {
    const HistoryJSON json = HistoryJSON::parse(line, nullptr, false);
    try {
      if (json.is_object() && isTaken(json)) return;
    } catch (const HistoryJSON::exception&) {  // counted like any other line that is not understood
    }
    ++contents_.unreadableLines;
  }

  HistoryContents contents() { return std::move(contents_); }

 private:
  bool isTaken(const HistoryJSON& json) {
    if (json.contains("record")) return isOutcomeTaken(json);
    auto record = recordIn(json);
    if (!record) return false;
    contents_.records.push_back(*std::move(record));
    return true;
  }

  bool isOutcomeTaken(const HistoryJSON& json) {
    const auto id = uuidIn(json, "record");
    if (!id) return false;
    // The outcome follows its record, mostly at once.
    const auto found = std::find_if(contents_.records.rbegin(), contents_.records.rend(),
                                    [&](const HistoryRecord& record) { return record.id == *id; });
    if (found != contents_.records.rend()) found->outcome = outcomeIn(json, found->time);
    return true;
  }

  HistoryContents contents_;
};

}  // namespace

std::string recordLine(const HistoryRecord& record) {
  HistoryJSON json{{"id", record.id.text()},        {"time", iso8601(record.time)},
                   {"program", record.program},     {"base", record.base},
                   {"productID", record.productID}, {"action", rawValue(record.action)}};
  if (!record.detail.empty()) json["detail"] = record.detail;
  if (record.reverses) json["reverses"] = record.reverses->text();
  if (record.menu) {
    json["set"] = record.menu->slot();
    json["mode"] = record.menu->modeName();
    json["menu"] = record.menu->hexDump();
    json["values"] = menuValuesJSON(*record.menu, record.product());
  }
  if (!record.wanted.empty()) json["wanted"] = valuesJSON(record.wanted);
  return lineOf(json);
}

std::string outcomeLine(const UUID& record, const HistoryOutcome& outcome) {
  HistoryJSON results = HistoryJSON::array();
  for (const ValueReceipt& receipt : outcome.values) results.push_back(receiptToJSON(receipt));
  HistoryJSON json{{"record", record.text()}, {"results", std::move(results)}};
  if (outcome.error) json["error"] = *outcome.error;
  if (outcome.menu) json["menu"] = outcome.menu->hexDump();
  return lineOf(json);
}

HistoryContents decodeHistory(std::string_view content) {
  HistoryDecoder decoder;
  while (!content.empty()) {
    const std::size_t end = std::min(content.find('\n'), content.size());
    if (end > 0) decoder.take(content.substr(0, end));
    content.remove_prefix(std::min(end + 1, content.size()));
  }
  return decoder.contents();
}

}  // namespace quorvane
