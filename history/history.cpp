#include "history/history.h"

#include <algorithm>
#include <utility>

#include "history/wheel_changes.h"
#include "session/menu_place.h"
#include "support/user_directories.h"

namespace quorvane {
namespace {

using std::filesystem::path;

constexpr const char* noFolder = "You have no home directory to keep it in";

std::optional<path> inStateDirectory(const path& folder) {
  const auto state = userStateDirectory();
  if (!state) return std::nullopt;
  return *state / folder;
}

// Why an operation failed; none when it did not.
template <typename Operation>
std::optional<std::string> failureOf(const Operation& operation) {
  try {
    operation();
    return std::nullopt;
  } catch (const std::exception& error) {
    return error.what();
  }
}

// How old a record may be that explains a change: changes are gathered before they are recorded.
constexpr auto recentRecords = 2 * WheelChanges::period;

// Whether a record says that the value became what it is in the menu `after`.
bool explains(const HistoryRecord& record, TuningParameter parameter, const TuningSnapshot& after) {
  if (!record.menu || !record.outcome || !record.outcome->menu) return false;
  const TuningSnapshot& written = *record.outcome->menu;
  return MenuPlace(written) == MenuPlace(after) &&
         written.rawValue(parameter) == after.rawValue(parameter) &&
         (MenuPlace(*record.menu) != MenuPlace(after) ||
          record.menu->rawValue(parameter) != after.rawValue(parameter));
}

// The values that changed from the record's menu to `after`, without those that a recent record
// explains.
std::vector<ValueReceipt> turnedValues(const HistoryRecord& record, const TuningSnapshot& after,
                                       const HistoryContents& contents) {
  const auto isExplained = [&](TuningParameter parameter) {
    return std::any_of(
        contents.records.begin(), contents.records.end(), [&](const HistoryRecord& earlier) {
          return record.time - earlier.time <= recentRecords && explains(earlier, parameter, after);
        });
  };
  const auto product = record.product();
  std::vector<ValueReceipt> values;
  for (const TuningParameter parameter : TuningParameter::adjustable(product)) {
    if (record.menu->rawValue(parameter) == after.rawValue(parameter)) continue;
    if (isExplained(parameter)) continue;
    const std::int64_t was = parameter.written(record.menu->value(parameter, product), product);
    const std::int64_t now = parameter.written(after.value(parameter, product), product);
    values.push_back({parameter, was, now, now, 0, {}});
  }
  return values;
}

}  // namespace

HistoryBatch::HistoryBatch(std::optional<path> file, const WheelBase& base, HistoryRecord record)
    : file_(std::move(file)), base_(base), record_(std::move(record)) {
  if (!file_) {
    failure_ = noFolder;
    return;
  }
  failure_ = failureOf([&] { HistoryFile(*file_).append(record_); });
}

void HistoryBatch::end(std::vector<ValueReceipt> values, std::optional<std::string> error) {
  record_.outcome = HistoryOutcome{std::move(values), std::move(error), base_.tuning()};
  if (failure_) return;
  failure_ = failureOf([&] { HistoryFile(*file_).append(record_.id, *record_.outcome); });
}

History::History(std::optional<path> folder, std::string program)
    : folder_(std::move(folder)), program_(std::move(program)) {}

History History::ofUser(std::string program) {
  return {inStateDirectory(path("Quorvane") / "history"), std::move(program)};
}

History History::ofSimulation(std::string program) {
  return {inStateDirectory(path("Quorvane") / "simulated" / "history"), std::move(program)};
}

std::optional<path> History::fileOf(const HIDDeviceInfo& base) const {
  if (!folder_) return std::nullopt;
  return *folder_ / historyFileName(base);
}

HistoryRecord History::newRecord(const HIDDeviceInfo& base, HistoryAction action) const {
  HistoryRecord record;
  record.id = UUID::random();
  record.time = wholeSeconds(WallClock::now());
  record.program = program_;
  record.base = base.displayName();
  record.productID = base.productID;
  record.action = action;
  return record;
}

HistoryBatch History::begin(const WheelBase& base, const HistoryIntent& intent) const {
  HistoryRecord record = newRecord(base.info(), intent.action);
  record.detail = intent.detail;
  record.reverses = intent.reverses;
  record.menu = base.tuning();
  record.wanted = intent.wanted;
  return {fileOf(base.info()), base, std::move(record)};
}

void History::addWheelChanges(const HIDDeviceInfo& base, const TuningSnapshot& before,
                              const TuningSnapshot& after) const {
  const auto file = fileOf(base);
  if (!file) return;
  HistoryRecord record = newRecord(base, HistoryAction::wheel);
  record.menu = before;
  HistoryFile(*file).add([&](const HistoryContents& contents) -> std::optional<HistoryRecord> {
    record.outcome = HistoryOutcome{turnedValues(record, after, contents), {}, after};
    if (record.outcome->values.empty()) return std::nullopt;
    return record;
  });
}

HistoryContents History::read(const HIDDeviceInfo& base) const {
  const auto file = fileOf(base);
  return file ? HistoryFile(*file).read() : HistoryContents();
}

}  // namespace quorvane
