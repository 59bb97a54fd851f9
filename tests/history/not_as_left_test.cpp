#include "history/not_as_left.h"

#include <gtest/gtest.h>

#include "tests/history/history_samples.h"

namespace quorvane {
namespace {

using P = TuningParameter;

constexpr std::uint8_t modeBit = 0x80;

// The sample menu with other bytes.
TuningSnapshot sampleMenuWith(const std::vector<std::pair<std::size_t, std::uint8_t>>& changed) {
  Bytes bytes = sampleMenu().raw();
  for (const auto& [offset, byte] : changed) bytes[offset] = byte;
  return TuningSnapshot::fromReport(bytes, {}).value();
}

TuningSnapshot withForce(std::uint8_t force) {
  return sampleMenuWith({{P(P::forceFeedback).offset(), force}});
}

HistoryRecord leaving(HistoryAction action, std::uint8_t force) {
  HistoryRecord record = sampleRecord(65, force);
  record.action = action;
  record.outcome->menu = withForce(force);
  return record;
}

std::vector<ParameterValue> differing(const std::vector<HistoryRecord>& records,
                                      const TuningSnapshot& menu) {
  const auto result = notAsLeft(records, menu);
  return result ? result->left : std::vector<ParameterValue>();
}

TEST(NotAsLeft, NamesTheValuesAsTheLastRecordLeftThem) {
  const std::vector<ParameterValue> eighty{{P::forceFeedback, 80}};
  for (const auto action :
       {HistoryAction::save, HistoryAction::apply, HistoryAction::set, HistoryAction::factoryReset,
        HistoryAction::undo, HistoryAction::redo, HistoryAction::wheel}) {
    EXPECT_EQ(differing({leaving(HistoryAction::save, 70), leaving(action, 80)}, withForce(100)),
              eighty)
        << rawValue(action);
    EXPECT_EQ(notAsLeft({leaving(action, 80)}, withForce(80)), std::nullopt) << rawValue(action);
  }
  const HistoryRecord record = leaving(HistoryAction::save, 80);
  EXPECT_EQ(notAsLeft({record}, withForce(100))->record, record);
}

TEST(NotAsLeft, ARecordThatOnlyShowedTheSetIsPassedOver) {
  for (const auto action :
       {HistoryAction::select, HistoryAction::mode, HistoryAction::rotation, HistoryAction::raw}) {
    EXPECT_EQ(differing({leaving(HistoryAction::save, 80), leaving(action, 100)}, withForce(100)),
              (std::vector<ParameterValue>{{P::forceFeedback, 80}}))
        << rawValue(action);
  }
}

TEST(NotAsLeft, AnotherSetOrModeAndACutShortRecordSayNothing) {
  const auto status = static_cast<std::uint8_t>(sampleMenu().raw()[TuningSnapshot::statusOffset]);
  const auto force = std::pair(P(P::forceFeedback).offset(), std::uint8_t{100});
  const auto otherSet = static_cast<std::uint8_t>((status & 0xF0U) | 4U);
  const auto otherMode = static_cast<std::uint8_t>(status ^ modeBit);
  const HistoryRecord record = leaving(HistoryAction::save, 80);
  EXPECT_EQ(notAsLeft({}, withForce(100)), std::nullopt);
  for (const std::uint8_t other : {otherSet, otherMode}) {
    const auto menu = sampleMenuWith({force, {TuningSnapshot::statusOffset, other}});
    EXPECT_EQ(notAsLeft({record}, menu), std::nullopt);
  }
  HistoryRecord cutShort = leaving(HistoryAction::save, 90);
  cutShort.outcome.reset();
  EXPECT_EQ(notAsLeft({record, cutShort}, withForce(100)), std::nullopt);
}

TEST(NotAsLeft, AValueThatIsAsLeftAgainNoLongerCounts) {
  const auto result = notAsLeft({leaving(HistoryAction::save, 80)}, withForce(100));
  ASSERT_TRUE(result);
  const auto product = FanatecProduct::lookup(defaultSimulatedProduct);
  EXPECT_EQ(stillNotAsLeft(*result, withForce(90), product), result->left);
  EXPECT_TRUE(stillNotAsLeft(*result, withForce(80), product).empty());
  const auto status = static_cast<std::uint8_t>(sampleMenu().raw()[TuningSnapshot::statusOffset]);
  const auto elsewhere =
      sampleMenuWith({{TuningSnapshot::statusOffset, static_cast<std::uint8_t>(status ^ modeBit)}});
  EXPECT_TRUE(stillNotAsLeft(*result, elsewhere, product).empty());
}

}  // namespace
}  // namespace quorvane
