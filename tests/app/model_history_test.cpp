#include <gtest/gtest.h>

#include "tests/app/model_fixture.h"

namespace quorvane {
namespace {

using P = TuningParameter;

class ModelHistory : public ModelTest {
 protected:
  std::vector<HistoryRecord> records() { return history_.read(info(0)).records; }

  void save(const std::vector<ParameterValue>& values) {
    for (const auto& [parameter, value] : values) model().stage(parameter, value);
    model().saveStaged();
    settle();
    takeLog();
  }

  void undo() {
    model().undo();
    settle();
  }

  void redo() {
    model().redo();
    settle();
  }

  // Turns a value with the base's own button.
  void turn(P parameter, std::int64_t value) {
    base().turn(parameter, value);
    settle();
  }
};

TEST_F(ModelHistory, ASaveHasAReceiptThatIsInTheHistory) {
  start();
  save({{P::forceFeedback, 80}, {P::vibration, 50}});
  ASSERT_TRUE(model().lastWrite());
  const auto& [record, leftAlone, notInHistory] = *model().lastWrite();
  EXPECT_TRUE(leftAlone.empty());
  EXPECT_EQ(record.action, HistoryAction::save);
  EXPECT_EQ(record.program, "quorvane");
  EXPECT_EQ(record.menu->slot(), 2);
  EXPECT_EQ(record.outcome->values,
            (std::vector<ValueReceipt>{{P::forceFeedback, 65, 80, 80, 250, {}},
                                       {P::vibration, 100, 50, 50, 250, {}}}));
  EXPECT_EQ(notInHistory, std::nullopt);
  ASSERT_EQ(records().size(), 1U);
  EXPECT_EQ(records().front().id, record.id);
  EXPECT_EQ(records().front().outcome->values, record.outcome->values);
}

TEST_F(ModelHistory, UndoAndRedoWriteTheValuesOfTheLastSave) {
  start();
  save({{P::forceFeedback, 80}, {P::vibration, 50}});
  undo();
  EXPECT_EQ(takeLog(), Lines{"[log] Undid 2 changes in set C (Custom)"});
  EXPECT_EQ(valueOnBase(P::forceFeedback), 65);
  EXPECT_EQ(valueOnBase(P::vibration), 100);
  EXPECT_EQ(model().lastWrite()->record.action, HistoryAction::undo);
  redo();
  EXPECT_EQ(takeLog(), Lines{"[log] Redid 2 changes in set C (Custom)"});
  EXPECT_EQ(valueOnBase(P::forceFeedback), 80);
  redo();
  EXPECT_EQ(takeLog(), Lines{"[log] Nothing to redo"});
}

TEST_F(ModelHistory, UndoingAgainGoesFurtherBackAndBeyondAStart) {
  start();
  save({{P::forceFeedback, 80}});
  model().apply(presetOf("Test", {{P::vibration, 50}}));
  settle();
  end();
  create();
  settle();
  takeLog();
  undo();
  EXPECT_EQ(valueOnBase(P::vibration), 100);
  EXPECT_EQ(valueOnBase(P::forceFeedback), 80);
  undo();
  EXPECT_EQ(valueOnBase(P::forceFeedback), 65);
  undo();
  EXPECT_EQ(takeLog().back(), "[log] Nothing to undo");
}

TEST_F(ModelHistory, AValueThatWasTurnedSinceIsNamedAndLeftAlone) {
  start();
  save({{P::forceFeedback, 80}, {P::vibration, 50}});
  turn(P::forceFeedback, 40);
  undo();
  EXPECT_EQ(takeLog(), Lines{"[log] Undid 1 change in set C (Custom); left alone, since changed "
                             "meanwhile: FF"});
  EXPECT_EQ(valueOnBase(P::forceFeedback), 40);
  EXPECT_EQ(valueOnBase(P::vibration), 100);
}

TEST_F(ModelHistory, NothingIsUndoneInAnotherSet) {
  start();
  save({{P::forceFeedback, 80}});
  model().selectSlot(3);
  settle();
  takeLog();
  takeTranscript();
  undo();
  EXPECT_EQ(takeLog(), Lines{"[error] Undo failed: the write was to set 2 of the standard menu; "
                             "choose that first"});
  EXPECT_EQ(takeTranscript(), Lines{"> ff 03 02 +61"});
}

TEST_F(ModelHistory, ARefusalIsNamedAndUndoIsTriedAgain) {
  start();
  save({{P::forceFeedback, 80}});
  behave([](SimulatedBehaviour& behaviour) { behaviour.ignored = {P::forceFeedback}; });
  undo();
  EXPECT_EQ(takeLog(), Lines{"[error] Undo failed: the base rejected FF: The base ignored the FF "
                             "write; it still reports 80"});
  behave([](SimulatedBehaviour& behaviour) { behaviour.ignored.clear(); });
  undo();
  EXPECT_EQ(valueOnBase(P::forceFeedback), 65);
}

TEST_F(ModelHistory, ASaveThatCannotBeRecordedIsMadeAndItsReceiptSaysSo) {
  start();
  std::filesystem::create_directory(state_ / historyFileName(info(0)));
  model().stage(P::forceFeedback, 80);
  model().saveStaged();
  settle();
  EXPECT_EQ(takeLog().back(), "[log] Saved 1 change to set C (Custom)");
  EXPECT_TRUE(model().lastWrite()->notInHistory->ends_with("Is a directory"));
}

TEST_F(ModelHistory, ChangesOnTheWheelAreGatheredFor30Seconds) {
  start();
  for (const std::int64_t value : {66, 67, 70}) turn(P::forceFeedback, value);
  turn(P::vibration, 50);
  EXPECT_EQ(records().size(), 0U);
  clock_.sleepFor(WheelChanges::period);
  turn(P::forceFeedback, 75);
  end();
  const auto all = records();
  ASSERT_EQ(all.size(), 2U);
  EXPECT_EQ(all[0].action, HistoryAction::wheel);
  EXPECT_EQ(all[0].outcome->values,
            (std::vector<ValueReceipt>{{P::forceFeedback, 65, 70, 70, 0, {}},
                                       {P::vibration, 100, 50, 50, 0, {}}}));
  EXPECT_EQ(all[1].outcome->values,
            (std::vector<ValueReceipt>{{P::forceFeedback, 70, 75, 75, 0, {}}}));
}

TEST_F(ModelHistory, ChangesOnTheWheelAreRecordedBeforeTheNextWrite) {
  start();
  turn(P::forceFeedback, 70);
  save({{P::vibration, 50}});
  ASSERT_EQ(records().size(), 2U);
  EXPECT_EQ(records()[0].action, HistoryAction::wheel);
  EXPECT_EQ(records()[1].action, HistoryAction::save);
}

TEST_F(ModelHistory, ADisconnectedBaseHasNoLastWrite) {
  start();
  save({{P::forceFeedback, 80}});
  model().disconnect();
  EXPECT_EQ(model().lastWrite(), std::nullopt);
}

TEST_F(ModelHistory, TellsWhatCanBeUndoneAndRedone) {
  start();
  EXPECT_EQ(model().reversible(), AppModel::Reversible());
  save({{P::forceFeedback, 80}});
  const UUID first = model().lastWrite()->record.id;
  EXPECT_EQ(model().reversible().byUndo->id, first);
  EXPECT_FALSE(model().reversible().byRedo);
  undo();
  EXPECT_FALSE(model().reversible().byUndo);
  EXPECT_EQ(model().reversible().byRedo->id, first);
  end();
  create();
  settle();
  EXPECT_EQ(model().reversible().byRedo->id, first);
  model().disconnect();
  EXPECT_EQ(model().reversible(), AppModel::Reversible());
}

TEST_F(ModelHistory, TheLastWriteNamesWhatWasLeftAlone) {
  start();
  save({{P::forceFeedback, 80}, {P::vibration, 50}});
  turn(P::forceFeedback, 40);
  undo();
  EXPECT_EQ(model().lastWrite()->leftAlone,
            (std::vector<ValueLeftAlone>{{P::forceFeedback, 40, 80}}));
}

TEST_F(ModelHistory, OnConnectingTheMenuIsComparedWithHowItWasLeft) {
  start();
  save({{P::forceFeedback, 80}});
  EXPECT_FALSE(model().notAsLeft());
  base().unplug();
  waitUntil([this] { return !model().isConnected(); });
  simulate([](SimulatedBase& simulated) { simulated.menu().put(P::forceFeedback, 100); });
  base().plug();
  waitUntil([this] { return model().isConnected(); });
  ASSERT_TRUE(model().notAsLeft());
  EXPECT_EQ(model().notAsLeft()->left, (std::vector<ParameterValue>{{P::forceFeedback, 80}}));
  save({{P::vibration, 50}});
  EXPECT_FALSE(model().notAsLeft());
}

TEST_F(ModelHistory, AHistoryThatCannotBeReadOffersNothing) {
  start();
  std::filesystem::create_directory(state_ / historyFileName(info(0)));
  save({{P::forceFeedback, 80}});
  EXPECT_EQ(model().reversible(), AppModel::Reversible());
}

}  // namespace
}  // namespace quorvane
