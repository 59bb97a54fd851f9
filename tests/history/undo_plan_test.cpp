#include "history/undo_plan.h"

#include <gtest/gtest.h>

#include "tests/history/history_samples.h"

namespace quorvane {
namespace {

using P = TuningParameter;
using Records = std::vector<HistoryRecord>;

constexpr auto undo = UndoDirection::undo;
constexpr auto redo = UndoDirection::redo;

TuningSnapshot menuWith(P parameter, std::uint8_t byte) {
  Bytes bytes = sampleMenu().raw();
  bytes[parameter.offset()] = byte;
  return TuningSnapshot::fromReport(bytes, {}).value();
}

std::optional<UUID> nextID(const Records& records, UndoDirection direction) {
  const auto record = nextToReverse(records, direction);
  return record ? std::optional(record->id) : std::nullopt;
}

TEST(NextToReverse, UndoGoesFurtherBackAndRedoTheOtherWay) {
  const HistoryRecord a = sampleRecord(65, 70);
  const HistoryRecord b = sampleRecord(70, 80);
  const auto undoOf = [](const HistoryRecord& record) {
    return sampleReversal(HistoryAction::undo, record);
  };
  const auto redoOf = [](const HistoryRecord& record) {
    return sampleReversal(HistoryAction::redo, record);
  };
  const HistoryRecord c = sampleRecord(65, 90);
  struct Case {
    Records records;
    std::optional<UUID> undone;
    std::optional<UUID> redone;
  };
  const std::vector<Case> cases{
      {{}, {}, {}},
      {{a}, a.id, {}},
      {{a, b}, b.id, {}},
      {{a, b, undoOf(b)}, a.id, b.id},
      {{a, b, undoOf(b), undoOf(a)}, {}, a.id},
      {{a, b, undoOf(b), undoOf(a), redoOf(a)}, a.id, b.id},
      {{a, b, undoOf(b), redoOf(b)}, b.id, {}},
      {{a, b, undoOf(b), c}, c.id, {}},
      {{a, b, undoOf(b), c, undoOf(c)}, a.id, c.id},
      {{undoOf(a), a}, a.id, {}},  // its record was removed with the old lines
  };
  for (std::size_t i = 0; i < cases.size(); ++i) {
    EXPECT_EQ(nextID(cases[i].records, undo), cases[i].undone) << i;
    EXPECT_EQ(nextID(cases[i].records, redo), cases[i].redone) << i;
  }
}

TEST(NextToReverse, AnUndoThatFailedOrWasCutShortIsNotCounted) {
  const HistoryRecord a = sampleRecord(65, 70);
  HistoryRecord failed = sampleReversal(HistoryAction::undo, a);
  failed.outcome->values = {{P::forceFeedback, 70, 65, {}, 250, "ignored"}};
  HistoryRecord ended = sampleReversal(HistoryAction::undo, a);
  ended.outcome->error = "Interrupted";
  HistoryRecord cutShort = sampleReversal(HistoryAction::undo, a);
  cutShort.outcome.reset();
  EXPECT_EQ(nextID({a, failed, ended, cutShort}, undo), a.id);
  EXPECT_EQ(nextID({a, failed, ended, cutShort}, redo), std::nullopt);
}

TEST(NextToReverse, OnlyWritesThatChangedValuesAreUndone) {
  for (int i = 0; i <= static_cast<int>(HistoryAction::wheel); ++i) {
    HistoryRecord record = sampleRecord(65, 80);
    record.action = static_cast<HistoryAction>(i);
    const bool isUndone = record.action == HistoryAction::save ||
                          record.action == HistoryAction::apply ||
                          record.action == HistoryAction::set;
    EXPECT_EQ(nextID({record}, undo).has_value(), isUndone) << rawValue(record.action);
  }
  EXPECT_EQ(nextID({sampleRecord(80, 80)}, undo), std::nullopt);
  HistoryRecord unknown = sampleRecord(65, 80);
  unknown.menu.reset();
  EXPECT_EQ(nextID({unknown}, undo), std::nullopt);
  HistoryRecord outside = sampleRecord(65, 120);
  outside.outcome->values = {{P::forceFeedback, 65, 120, {}, 0, "FF value 120 is outside"}};
  EXPECT_EQ(nextID({outside}, undo), std::nullopt);
}

TEST(UndoPlan, WritesWhatWasThereAndLeavesAloneWhatWasChangedSince) {
  const HistoryRecord record = sampleRecord(65, 80);
  struct Case {
    UndoDirection direction;
    std::uint8_t present;
    UndoPlan plan;
  };
  const std::vector<Case> cases{
      {undo, 80, {{{P::forceFeedback, 65}}, {}}},
      {undo, 65, {{}, {}}},
      {undo, 70, {{}, {{P::forceFeedback, 70, 80}}}},
      {redo, 65, {{{P::forceFeedback, 80}}, {}}},
      {redo, 80, {{}, {}}},
      {redo, 70, {{}, {{P::forceFeedback, 70, 65}}}},
  };
  for (const auto& [direction, present, plan] : cases) {
    EXPECT_EQ(undoPlan(record, direction, menuWith(P::forceFeedback, present)), plan) << present;
  }
}

TEST(UndoPlan, OfAWriteThatWasCutShortUsesTheMenuBefore) {
  HistoryRecord record = sampleRecord(0, 80);
  record.outcome.reset();
  EXPECT_EQ(undoPlan(record, undo, menuWith(P::forceFeedback, 80)),
            (UndoPlan{{{P::forceFeedback, 65}}, {}}));
  EXPECT_EQ(undoPlan(record, undo, sampleMenu()), UndoPlan());
}

TEST(UndoPlan, ComparesWithWhatTheBaseKept) {
  HistoryRecord record = sampleRecord(65, 80);
  record.outcome->values = {{P::forceFeedback, 65, 80, 75, 250, "ignored"}};
  EXPECT_EQ(undoPlan(record, undo, menuWith(P::forceFeedback, 75)),
            (UndoPlan{{{P::forceFeedback, 65}}, {}}));
}

TEST(UndoPlan, ValuesOfOneByteAreTheSame) {
  HistoryRecord record = sampleRecord(65, 80);
  record.outcome->values = {{P::brakeForce, 50, 57, 50, 250, {}}};
  EXPECT_EQ(nextID({record}, undo), std::nullopt);
  record.outcome->values = {{P::sensitivity, 0, 900, 900, 250, {}}};
  EXPECT_EQ(undoPlan(record, undo, sampleMenu()), (UndoPlan{{{P::sensitivity, 0}}, {}}));
}

TEST(UndoPlan, IsForTheRecordsSetAndModeOnly) {
  HistoryRecord record = sampleRecord(65, 80);
  const auto withStatus = [](std::uint8_t byte) { return menuWith(P::slot, byte); };
  const std::uint8_t standard = sampleMenu().raw()[TuningSnapshot::statusOffset];
  const auto advanced = static_cast<std::uint8_t>(standard & 0x7F);
  EXPECT_TRUE(isOfSameSet(record, withStatus(standard)));
  EXPECT_FALSE(isOfSameSet(record, withStatus(advanced)));
  EXPECT_FALSE(isOfSameSet(record, withStatus(static_cast<std::uint8_t>(standard + 1))));
  record.outcome->menu = withStatus(advanced);
  EXPECT_TRUE(isOfSameSet(record, withStatus(advanced)));
  record.menu.reset();
  EXPECT_FALSE(isOfSameSet(record, withStatus(standard)));
}

}  // namespace
}  // namespace quorvane
