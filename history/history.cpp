#include "history/history.h"

#include <utility>

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
  HistoryOutcome outcome;
  outcome.menu = after;
  const auto product = record.product();
  for (const TuningParameter parameter : TuningParameter::adjustable(product)) {
    if (before.rawValue(parameter) == after.rawValue(parameter)) continue;
    const std::int64_t was = parameter.written(before.value(parameter, product), product);
    const std::int64_t now = parameter.written(after.value(parameter, product), product);
    outcome.values.push_back({parameter, was, now, now, 0, {}});
  }
  HistoryFile(*file).append(record);
  HistoryFile(*file).append(record.id, outcome);
}

HistoryContents History::read(const HIDDeviceInfo& base) const {
  const auto file = fileOf(base);
  return file ? HistoryFile(*file).read() : HistoryContents();
}

}  // namespace quorvane
