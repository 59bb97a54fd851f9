#include "tests/screenshots/written_history.h"

#include <QDateTime>
#include <chrono>
#include <utility>

#include "simulator/simulated_base.h"
#include "simulator/simulated_menu.h"

namespace quorvane {
namespace {

using enum TuningParameter::Case;

// A record of yesterday or today; each value is what it was and what was wanted.
struct Written {
  int daysAgo;
  QTime time;
  const char* program;
  HistoryAction action;
  const char* detail;
  int set;
  std::vector<std::pair<ParameterValue, std::int64_t>> values;
};

HistoryRecord recordOf(const Written& written, std::int64_t productID) {
  HistoryRecord record;
  record.id = UUID::random();
  const QDateTime time(QDate::currentDate().addDays(-written.daysAgo), written.time);
  record.time = WallSeconds(std::chrono::seconds(time.toSecsSinceEpoch()));
  record.program = written.program;
  record.productID = productID;
  record.action = written.action;
  record.detail = written.detail;
  SimulatedBase base(FanatecProduct::lookup(productID).value());
  base.menu().select(written.set);
  HistoryOutcome outcome;
  for (const auto& [was, wanted] : written.values) {
    base.menu().put(was.parameter, was.value);
    record.wanted.push_back({was.parameter, wanted});
    outcome.values.push_back({was.parameter, was.value, wanted, wanted, 250, std::nullopt});
  }
  record.menu = TuningSnapshot::fromReport(base.menu().report(), record.time);
  record.outcome = outcome;
  return record;
}

}  // namespace

std::vector<HistoryRecord> writtenHistory(std::int64_t productID) {
  using enum HistoryAction;
  const std::vector<Written> all{
      {7, QTime(20, 15), "quorvane", factoryReset, "", 2, {}},
      {1, QTime(21, 32), "quorvanectl", set, "", 4, {{{interpolation, 5}, 3}}},
      {1, QTime(21, 57), "quorvane", wheel, "", 1, {{{forceFeedback, 70}, 65}}},
      {1,
       QTime(22, 10),
       "quorvane",
       apply,
       "Spa, wet",
       1,
       {{{vibration, 100}, 60},
        {{brakeLevelIndicator, 101}, 90},
        {{springEffect, 100}, 0},
        {{damperEffect, 50}, 30},
        {{forceEffectIntensity, 100}, 70},
        {{interpolation, 11}, 6}}},
      {0, QTime(0, 1), "quorvane", select, "3", 2, {}},
      {0,
       QTime(0, 2),
       "quorvane",
       save,
       "",
       2,
       {{{forceFeedback, 50}, 65}, {{naturalDamper, 15}, 25}}}};
  std::vector<HistoryRecord> records;
  records.reserve(all.size());
  for (const Written& written : all) records.push_back(recordOf(written, productID));
  return records;
}

}  // namespace quorvane
