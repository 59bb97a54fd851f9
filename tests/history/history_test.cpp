#include "history/history.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>

#include "protocol/error.h"
#include "session/receipt_writer.h"
#include "tests/error_text.h"
#include "tests/history/watched_device.h"
#include "tests/session/simulated_session.h"
#include "tests/support/child_process.h"
#include "tests/support/file_calls.h"
#include "tests/support/scoped_variable.h"
#include "tests/support/temporary_directory.h"

namespace quorvane {
namespace {

using P = TuningParameter;

class HistoryTest : public SimulatedSessionTest {
 protected:
  std::vector<HistoryRecord> records() const { return history_.read(base->info()).records; }

  HistoryBatch begin(const HistoryIntent& intent) const { return history_.begin(*base, intent); }

  TemporaryDirectory directory_;
  const History history_{directory_.path(), "test"};
};

TEST_F(HistoryTest, TheRecordIsInTheFileWhenTheFirstPacketIsSent) {
  std::vector<std::size_t> found;
  std::vector<bool> ended;
  describeAs([&](HIDDeviceInfo& info) {
    info.device = std::make_shared<WatchedDevice>(info.device, [&](ByteView packet) {
      if (packet[2] == FanatecCommands::requestCommand) return;
      const auto now = records();
      found.push_back(now.size());
      ended.push_back(!now.empty() && now.back().outcome.has_value());
    });
  });
  connectAndRead();
  const TuningSnapshot menu = base->tuning().value();
  HistoryBatch batch = begin({HistoryAction::save, {{P::forceFeedback, 80}, {P::vibration, 50}}});
  ReceiptWriter writer(*base, menu, clock);
  batch.end({writer.write(P::forceFeedback, 80), writer.write(P::vibration, 50)});
  EXPECT_EQ(found, (std::vector<std::size_t>{1, 1}));
  EXPECT_EQ(ended, (std::vector<bool>{false, false}));
  EXPECT_EQ(batch.failure(), std::nullopt);

  ASSERT_EQ(records().size(), 1U);
  HistoryRecord record = records().front();
  EXPECT_EQ(record.menu->raw(), menu.raw());
  EXPECT_EQ(record.outcome->menu->raw(), menuReport());
  EXPECT_EQ(record.outcome->values,
            (std::vector<ValueReceipt>{{P::forceFeedback, 65, 80, 80, 250, {}},
                                       {P::vibration, 100, 50, 50, 250, {}}}));
}

TEST_F(HistoryTest, RecordingReadsNothingFromTheBase) {
  connect();
  HistoryBatch batch = begin({HistoryAction::rotation, {}, "900"});
  batch.end({});
  EXPECT_EQ(takeTranscript(), Lines{});
  ASSERT_EQ(records().size(), 1U);
  EXPECT_EQ(records().front().menu, std::nullopt);
  EXPECT_EQ(records().front().program, "test");
  EXPECT_EQ(records().front().base, base->info().displayName());
}

TEST_F(HistoryTest, AnOperationIsOneBatchWithItsError) {
  connectAndRead();
  const auto nothing = [](const HistoryBatch& batch) { EXPECT_EQ(batch.failure(), std::nullopt); };
  const HistoryIntent select{HistoryAction::select, {}, "3"};
  const TuningSnapshot menu = history_.during(
      *base, select, [&] { return base->selectSlot(3, TuningLayout::inPlace); }, nothing);
  EXPECT_EQ(menu.slot(), 3);
  base->disconnect();
  EXPECT_EQ(errorText([&] {
              history_.during(
                  *base, {HistoryAction::mode}, [&] { base->switchMenuMode(); }, nothing);
            }),
            "Device is not open");
  ASSERT_EQ(records().size(), 2U);
  EXPECT_EQ(records()[0].outcome->menu->slot(), 3);
  EXPECT_EQ(records()[0].outcome->error, std::nullopt);
  EXPECT_EQ(records()[1].outcome->error, "Device is not open");
}

TEST_F(HistoryTest, AFullOrReadOnlyDiskStopsNoBatch) {
  connectAndRead();
  const std::string file = (directory_ / historyFileName(base->info())).string();
  for (const int error : {ENOSPC, EROFS}) {
    const FileCalls calls(FileCalls::failEach("write", error));
    HistoryBatch batch = begin({HistoryAction::save});
    batch.end({});
    EXPECT_EQ(batch.failure(), file + ": " + std::generic_category().message(error));
    EXPECT_TRUE(batch.record().outcome.has_value());
  }
  EXPECT_EQ(records().size(), 0U);
}

TEST_F(HistoryTest, AnOutcomeThatCannotBeWrittenIsAFailure) {
  connectAndRead();
  HistoryBatch batch = begin({HistoryAction::save});
  const FileCalls calls(FileCalls::failEach("write", ENOSPC));
  batch.end({});
  EXPECT_NE(batch.failure(), std::nullopt);
  EXPECT_EQ(records().size(), 1U);
}

TEST_F(HistoryTest, WithoutAFolderNothingIsRecorded) {
  connectAndRead();
  const History nowhere({}, "test");
  HistoryBatch batch = nowhere.begin(*base, {HistoryAction::save});
  batch.end({});
  EXPECT_EQ(batch.failure(), "You have no home directory to keep it in");
  EXPECT_EQ(nowhere.read(base->info()), HistoryContents());
}

TEST_F(HistoryTest, IsInTheUsersStateDirectory) {
  const ScopedVariable state("XDG_STATE_HOME", directory_.path().string());
  connectAndRead();
  History::ofUser("one").begin(*base, {HistoryAction::save});
  History::ofSimulation("two").begin(*base, {HistoryAction::save});
  const std::string name = historyFileName(base->info());
  EXPECT_EQ(HistoryFile(directory_.path() / "Quorvane/history" / name).read().records.size(), 1U);
  EXPECT_EQ(
      HistoryFile(directory_.path() / "Quorvane/simulated/history" / name).read().records.size(),
      1U);
}

// A menu with other values of two settings.
TuningSnapshot turned(const TuningSnapshot& menu, std::uint8_t forceFeedback,
                      std::uint8_t vibration) {
  Bytes bytes = menu.raw();
  bytes[P(P::forceFeedback).offset()] = forceFeedback;
  bytes[P(P::vibration).offset()] = vibration;
  return TuningSnapshot::fromReport(bytes, {}).value();
}

TEST_F(HistoryTest, ChangesOnTheWheelAreOneFinishedRecord) {
  connectAndRead();
  const TuningSnapshot before = base->tuning().value();
  const TuningSnapshot after = turned(before, 70, 9);
  history_.addWheelChanges(base->info(), before, after);
  ASSERT_EQ(records().size(), 1U);
  const HistoryRecord record = records().front();
  EXPECT_EQ(record.action, HistoryAction::wheel);
  EXPECT_EQ(record.menu->raw(), before.raw());
  EXPECT_EQ(record.outcome->menu->raw(), after.raw());
  EXPECT_EQ(record.outcome->values,
            (std::vector<ValueReceipt>{{P::forceFeedback, 65, 70, 70, 0, {}},
                                       {P::vibration, 100, 90, 90, 0, {}}}));
}

TEST_F(HistoryTest, ChangesThatTwoProgramsSeeAreRecordedOnce) {
  connectAndRead();
  const TuningSnapshot before = base->tuning().value();
  history_.addWheelChanges(base->info(), before, turned(before, 70, 10));
  const History other(directory_.path(), "another program");
  other.addWheelChanges(base->info(), before, turned(before, 70, 10));
  EXPECT_EQ(records().size(), 1U);
  other.addWheelChanges(base->info(), before, turned(before, 70, 9));
  ASSERT_EQ(records().size(), 2U);
  EXPECT_EQ(records().back().outcome->values,
            (std::vector<ValueReceipt>{{P::vibration, 100, 90, 90, 0, {}}}));
}

TEST_F(HistoryTest, WhatAnotherProgramWroteWasNotTurnedOnTheWheel) {
  connectAndRead();
  const TuningSnapshot before = base->tuning().value();
  HistoryBatch batch = begin({HistoryAction::set, {{P::forceFeedback, 80}}});
  batch.end({ReceiptWriter(*base, before, clock).write(P::forceFeedback, 80)});
  const History other(directory_.path(), "another program");
  other.addWheelChanges(base->info(), before, turned(before, 80, 10));
  EXPECT_EQ(records().size(), 1U);
  other.addWheelChanges(base->info(), before, turned(before, 81, 10));
  EXPECT_EQ(records().size(), 2U);
}

TEST_F(HistoryTest, AnOldRecordExplainsNoChange) {
  connectAndRead();
  const TuningSnapshot before = base->tuning().value();
  const TuningSnapshot after = turned(before, 80, 10);
  history_.addWheelChanges(base->info(), before, after);
  HistoryRecord old = records().front();
  old.time -= std::chrono::seconds(61);
  const auto file = history_.fileOf(base->info()).value();
  std::filesystem::remove(file);
  HistoryFile(file).append(old);
  HistoryFile(file).append(old.id, *old.outcome);
  history_.addWheelChanges(base->info(), before, after);
  EXPECT_EQ(records().size(), 2U);
}

}  // namespace
}  // namespace quorvane
