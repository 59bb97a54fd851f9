#include "ui/history/history_entry.h"

#include <gtest/gtest.h>

#include <QLocale>
#include <string>
#include <vector>

#include "tests/history/history_samples.h"
#include "ui/history/history_choice.h"

namespace quorvane {
namespace {

using P = TuningParameter;

// "TITLE | FF 65 → 80, brF not taken! | NOTE | TROUBLE | WHO"; "!" marks what was not taken.
std::string entryText(const HistoryRecord& record) {
  const HistoryEntry entry = historyEntry(record);
  QStringList values;
  for (const HistoryEntry::Value& value : entry.values) {
    values += value.code + QLatin1Char(' ') + value.change +
              (value.isTaken ? QString() : QStringLiteral("!"));
  }
  return QStringList{entry.title, values.join(QStringLiteral(", ")), entry.note, entry.trouble,
                     entry.who}
      .join(QStringLiteral(" | "))
      .toStdString();
}

// A record of an action without values that succeeded.
HistoryRecord plainRecord(HistoryAction action, const std::string& detail = {}) {
  HistoryRecord record = sampleRecord(65, 80);
  record.action = action;
  record.detail = detail;
  record.wanted.clear();
  record.outcome->values.clear();
  return record;
}

HistoryRecord savedInWindow(HistoryAction action, const std::string& detail = {}) {
  HistoryRecord record = sampleRecord(65, 80);
  record.program = "quorvane";
  record.action = action;
  record.detail = detail;
  record.wanted.push_back({P::brakeForce, 70});
  record.outcome->values.push_back({P::brakeForce, 50, 70, 50, 250, "ignored"});
  return record;
}

TEST(HistoryEntry, SaysWhatWasWrittenWhereAndByWhom) {
  HistoryRecord unknown = sampleRecord(65, 80);
  unknown.menu.reset();
  unknown.outcome->values.front().was.reset();
  HistoryRecord cutShort = sampleRecord(65, 80);
  cutShort.outcome.reset();
  HistoryRecord ended = plainRecord(HistoryAction::factoryReset);
  ended.outcome->error = "the base is gone\x1b[31m";
  HistoryRecord turned = sampleRecord(70, 65);
  turned.action = HistoryAction::wheel;
  HistoryRecord foreign = sampleRecord(65, 80);
  foreign.program = "other\nprogram";
  struct Case {
    HistoryRecord record;
    std::string text;
  };
  const std::vector<Case> cases{
      {sampleRecord(65, 80), "1 value to set C (Custom) | FF 65 → 80 |  |  | quorvanectl set"},
      {savedInWindow(HistoryAction::save),
       "1 of 2 values to set C (Custom) | FF 65 → 80, brF not taken! |  |  | this window"},
      {savedInWindow(HistoryAction::apply, "Spa, <b>wet</b>"),
       "Applied \"Spa, <b>wet</b>\" to set C (Custom) | FF 65 → 80, brF not taken! |  |  | this "
       "window"},
      {savedInWindow(HistoryAction::undo),
       "Undid 1 value in set C (Custom) | FF 65 → 80, brF not taken! |  |  | this window"},
      {savedInWindow(HistoryAction::redo),
       "Redid 1 value in set C (Custom) | FF 65 → 80, brF not taken! |  |  | this window"},
      {turned, "Turned on the wheel, set C (Custom) | FF 70 → 65 |  |  | the base"},
      {unknown, "1 value | FF → 80 |  |  | quorvanectl set"},
      {cutShort,
       "1 value to set C (Custom) | FF → 80 |  | Cut short: what became of it is not known | "
       "quorvanectl set"},
      {foreign, "1 value to set C (Custom) | FF 65 → 80 |  |  | other program"},
      {plainRecord(HistoryAction::select, "3"),
       "Switched to set 3 |  | 16 values of set C kept here |  | quorvanectl select"},
      {plainRecord(HistoryAction::mode),
       "Switched to the advanced menu |  | 16 values of set C kept here |  | quorvanectl mode"},
      {ended,
       "Factory reset, every set |  | 16 values of set C kept here | the base is gone [31m | "
       "quorvanectl factory-reset"},
      {plainRecord(HistoryAction::rotation, "900"),
       "Steering angle of 900 deg |  | 16 values of set C kept here |  | quorvanectl rotation"},
      {plainRecord(HistoryAction::raw, "ff 03 02"),
       "Packet ff 03 02 |  | 16 values of set C kept here |  | quorvanectl raw"},
  };
  for (const Case& each : cases) EXPECT_EQ(entryText(each.record), each.text);
}

TEST(HistoryEntry, IsReadInOneLine) {
  EXPECT_EQ(historyLine(historyEntry(savedInWindow(HistoryAction::save))).toStdString(),
            "1 of 2 values to set C (Custom), FF 65 → 80, brF not taken, this window");
}

TEST(HistoryEntry, DaysAreNamedFromToday) {
  const QDate today(2026, 3, 1);
  EXPECT_EQ(historyDay(today, today), QStringLiteral("Today"));
  EXPECT_EQ(historyDay(QDate(2026, 2, 28), today), QStringLiteral("Yesterday"));
  const QDate older(2026, 2, 27);
  EXPECT_EQ(historyDay(older, today), QLocale().toString(older, QLocale::LongFormat));
}

TEST(HistoryEntry, GoingBackLeadsToTheWholeMenuBefore) {
  HistoryRecord record = sampleRecord(65, 80);
  const auto product = record.product();
  TuningSnapshot now = sampleMenu();
  EXPECT_TRUE(editsBackTo(record, now, product).empty());
  SimulatedBase base(product.value());
  base.menu().put(P::forceFeedback, 80);
  base.menu().put(P::vibration, 50);
  now = TuningSnapshot::fromReport(base.menu().report(), WallClock::now()).value();
  EXPECT_EQ(editsBackTo(record, now, product),
            (StagedValues{{P::forceFeedback, 65}, {P::vibration, 100}}));
}

TEST(HistoryEntry, AChoiceNamesAnotherSet) {
  const HistoryRecord record = sampleRecord(65, 80);
  SimulatedBase base(record.product().value());
  base.menu().select(3);
  const auto other = TuningSnapshot::fromReport(base.menu().report(), WallClock::now()).value();
  const QString back = historyChoice(record, sampleMenu());
  EXPECT_TRUE(back.startsWith(QStringLiteral("Back to before "))) << back.toStdString();
  EXPECT_EQ(historyChoice(record, other),
            back + QStringLiteral(", with the values of set C (Custom)"));
  HistoryRecord unknown = record;
  unknown.menu.reset();
  EXPECT_EQ(historyChoice(unknown, other), QStringLiteral("The values before this are not known"));
}

}  // namespace
}  // namespace quorvane
