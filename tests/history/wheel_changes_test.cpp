#include "history/wheel_changes.h"

#include <gtest/gtest.h>

#include "tests/history/history_samples.h"

namespace quorvane {
namespace {

using P = TuningParameter;

constexpr Monotonic::time_point start;

Monotonic::time_point atSecond(int seconds) { return start + std::chrono::seconds(seconds); }

TuningSnapshot menuOf(std::uint8_t forceFeedback, std::uint8_t setsAhead = 0) {
  Bytes bytes = sampleMenu().raw();
  bytes[P(P::forceFeedback).offset()] = forceFeedback;
  bytes[TuningSnapshot::statusOffset] =
      static_cast<std::uint8_t>(bytes[TuningSnapshot::statusOffset] + setsAhead);
  return TuningSnapshot::fromReport(bytes, {}).value();
}

TEST(WheelChanges, AreGatheredForTheirPeriod) {
  WheelChanges changes;
  EXPECT_EQ(changes.add(menuOf(65), menuOf(66), atSecond(0)), std::nullopt);
  EXPECT_EQ(changes.add(menuOf(66), menuOf(67), atSecond(29)), std::nullopt);
  EXPECT_EQ(changes.add(menuOf(67), menuOf(68), atSecond(30)),
            (WheelChanges::Gathered{menuOf(65), menuOf(67)}));
  EXPECT_EQ(changes.take(), (WheelChanges::Gathered{menuOf(67), menuOf(68)}));
  EXPECT_EQ(changes.take(), std::nullopt);
}

TEST(WheelChanges, ThatWereTakenBackAreNone) {
  WheelChanges changes;
  changes.add(menuOf(65), menuOf(66), atSecond(0));
  changes.add(menuOf(66), menuOf(65), atSecond(1));
  EXPECT_EQ(changes.take(), std::nullopt);
}

TEST(WheelChanges, OfAnotherSetAreGatheredApart) {
  WheelChanges changes;
  changes.add(menuOf(65), menuOf(66), atSecond(0));
  EXPECT_EQ(changes.add(menuOf(66), menuOf(50, 1), atSecond(1)),
            (WheelChanges::Gathered{menuOf(65), menuOf(66)}));
  EXPECT_EQ(changes.take(), std::nullopt);
  changes.add(menuOf(65), menuOf(66), atSecond(2));
  EXPECT_EQ(changes.add(menuOf(50, 1), menuOf(51, 1), atSecond(3)),
            (WheelChanges::Gathered{menuOf(65), menuOf(66)}));
  EXPECT_EQ(changes.take(), (WheelChanges::Gathered{menuOf(50, 1), menuOf(51, 1)}));
}

}  // namespace
}  // namespace quorvane
