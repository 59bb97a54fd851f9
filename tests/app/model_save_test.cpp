#include <gtest/gtest.h>

#include <QCoreApplication>
#include <functional>
#include <string>
#include <vector>

#include "tests/app/model_fixture.h"

namespace quorvane {
namespace {

using P = TuningParameter;

class ModelSave : public ModelTest {
 protected:
  // Stages three edits, in reverse menu order.
  void stageThree() {
    model().stage(P::naturalInertia, 9);
    model().stage(P::forceFeedback, 80);
    model().stage(P::sensitivity, 800);
  }

  void save() {
    model().saveStaged();
    settle();
  }

  // Saves, and calls `event` on the main thread during the save's pause with this number, from 0.
  void saveAndAtPause(int pause, const std::function<void()>& event) {
    Gate gate;
    clock_.at(Moment::pause, pause, [&] { gate.pass(); });
    model().saveStaged();
    gate.awaitArrival();
    event();
    gate.open();
    settle();
  }
};

TEST_F(ModelSave, WritesInMenuOrderAndReadsEachValueBack) {
  start();
  stageThree();
  watchStates();
  save();
  EXPECT_EQ(takeLog(),
            (Lines{"[log] Saving 3 changes\u2026", "[log] Saved 3 changes to set C (Custom)"}));
  EXPECT_EQ(takeTranscript(), (Lines{writeOf("d1", "41", "05"), commitPause, menuRequest,  //
                                     writeOf("d1", "50", "05"), commitPause, menuRequest,  //
                                     writeOf("d1", "50", "09"), commitPause, menuRequest}));
  EXPECT_EQ(staged(), "");
  EXPECT_EQ(valueOf(P::sensitivity), 800);
  EXPECT_EQ(valueOf(P::forceFeedback), 80);
  EXPECT_EQ(valueOf(P::naturalInertia), 9);
  const std::string known = "CSL DD Wheel Base; identity+menu; ";
  EXPECT_EQ(takeStates(),
            (Lines{"busy; " + known + "SEN=800 FF=80 NIN=9; Connected to CSL DD Wheel Base",
                   "busy; " + known + "SEN=800 FF=80 NIN=9; Saving 3 changes\u2026",
                   "idle; " + known + "nothing staged; Saving 3 changes\u2026",
                   "idle; " + known + "nothing staged; Saved 3 changes to set C (Custom)"}));
}

TEST_F(ModelSave, OfThreeWithTheSecondIgnoredKeepsTheSecondStaged) {
  start();
  behave([](SimulatedBehaviour& b) { b.ignored = {P::forceFeedback}; });
  stageThree();
  save();
  EXPECT_EQ(takeLog(),
            (Lines{"[log] Saving 3 changes\u2026",
                   "[error] Saved 2 of 3; the base rejected FF: The base ignored the FF write; it "
                   "still reports 65"}));
  EXPECT_EQ(takeTranscript(), (Lines{writeOf("d1", "41", "05"), commitPause, menuRequest,  //
                                     writeOf("d1", "50", "05"), commitPause, menuRequest,  //
                                     writeOf("d1", "41", "09"), commitPause, menuRequest}));
  EXPECT_EQ(staged(), "FF=80");
  EXPECT_EQ(valueOf(P::forceFeedback), 65);
  EXPECT_EQ(valueOf(P::naturalInertia), 9);
}

TEST_F(ModelSave, WhatWasRejectedCanBeSavedAgain) {
  start();
  behave([](SimulatedBehaviour& b) { b.ignored = {P::forceFeedback}; });
  stageThree();
  save();
  behave([](SimulatedBehaviour& b) { b.ignored.clear(); });
  takeLog();
  save();
  EXPECT_EQ(takeLog(),
            (Lines{"[log] Saving 1 change\u2026", "[log] Saved 1 change to set C (Custom)"}));
  EXPECT_EQ(staged(), "");
}

TEST_F(ModelSave, EveryRejectionIsNamed) {
  start();
  behave([](SimulatedBehaviour& b) { b.ignored = {P::forceFeedback, P::naturalInertia}; });
  stageThree();
  model().stage(P::driftMode, 2);
  model().stage(P::brakeLevelIndicator, 102);
  save();
  EXPECT_EQ(takeLog(), (Lines{"[log] Saving 5 changes\u2026",
                              "[error] Saved 1 of 5; the base rejected "
                              "FF: The base ignored the FF write; it still reports 65; "
                              "BLI: BLI value 102 is outside 0...101; "
                              "DRI: DRI is not available on CSL DD / GT DD Pro / ClubSport DD; "
                              "NIN: The base ignored the NIN write; it still reports 5"}));
  EXPECT_EQ(staged(), "FF=80 BLI=102 DRI=2 NIN=9");
}

TEST_F(ModelSave, WithoutTheSetThatTheyAreMeantForValuesAreRejected) {
  start();
  behave([](SimulatedBehaviour& b) { b.switchDelay = Seconds(1); });
  model().stage(P::slot, 4);
  model().stage(P::forceFeedback, 56);
  save();
  EXPECT_EQ(
      takeLog(),
      (Lines{"[log] Saving 2 changes\u2026",
             "[error] Saved 0 of 2; the base rejected "
             "SLOT: The base ignored the SLOT write; it still reports 2; "
             "FF: Invalid report: the base is in set 2 of the standard menu now, not in set 4 "
             "of the standard menu; write it again if it belongs there"}));
  EXPECT_EQ(valueOf(P::forceFeedback), 65);
}

TEST_F(ModelSave, NamesTheSet) {
  struct Set {
    int number;
    bool isAdvanced;
    std::string name;
  };
  const std::vector<Set> sets{{1, false, "A (Auto Setup)"},
                              {2, false, "C (Custom)"},
                              {5, false, "C (Custom)"},
                              {1, true, "1"},
                              {3, true, "3"}};
  for (const auto& [number, isAdvanced, name] : sets) {
    simulate([&, set = number, advanced = isAdvanced](SimulatedBase& simulated) {
      simulated.menu().reset();
      simulated.menu().select(set);
      if (advanced) simulated.menu().toggleMode();
    });
    start();
    model().stage(P::forceFeedback, 80);
    save();
    EXPECT_EQ(takeLog(),
              (Lines{"[log] Saving 1 change\u2026", "[log] Saved 1 change to set " + name}));
    end();
  }
}

TEST_F(ModelSave, AValueIsRoundedAsTheBaseKeepsIt) {
  start();
  model().stage(P::brakeForce, 57);
  save();
  EXPECT_EQ(takeLog(),
            (Lines{"[log] Saving 1 change\u2026", "[log] Saved 1 change to set C (Custom)"}));
  EXPECT_EQ(staged(), "");
  EXPECT_EQ(valueOf(P::brakeForce), 50);
}

TEST_F(ModelSave, SensitivityZeroSavesTheAutomaticAngle) {
  start();
  model().stage(P::sensitivity, 0);
  save();
  EXPECT_EQ(takeTranscript(), (Lines{writeOf("7e", "41", "05"), commitPause, menuRequest}));
  EXPECT_EQ(staged(), "");
  EXPECT_EQ(valueOf(P::sensitivity), 2530);
}

TEST_F(ModelSave, AStagedSlotIsSwitchedToFirst) {
  start();
  model().stage(P::forceFeedback, 80);
  model().stage(P::slot, 1);
  save();
  EXPECT_EQ(takeLog(),
            (Lines{"[log] Saving 2 changes\u2026", "[log] Saved 2 changes to set A (Auto Setup)"}));
  const Lines transcript = takeTranscript();
  ASSERT_EQ(transcript.size(), 6U);
  EXPECT_EQ(transcript[0], "> ff 03 01 01 +60");
  EXPECT_TRUE(transcript[3].starts_with("> ff 03 00 01 ")) << transcript[3];
}

TEST_F(ModelSave, AValueOutOfRangeSendsNothing) {
  start();
  model().stage(P::forceFeedback, 101);
  save();
  EXPECT_EQ(takeLog(),
            (Lines{"[log] Saving 1 change\u2026",
                   "[error] Saved 0 of 1; the base rejected FF: FF value 101 is outside 0...100"}));
  EXPECT_EQ(takeTranscript(), Lines{});
  EXPECT_EQ(staged(), "FF=101");
}

TEST_F(ModelSave, WithoutAMenuNothingIsWritten) {
  behave([](SimulatedBehaviour& b) { b.tuningSilent = true; });
  start();
  stageThree();
  save();
  const std::string blind = "No tuning data received from the base yet; refusing to write blind";
  EXPECT_EQ(takeLog(), (Lines{"[log] Saving 3 changes\u2026",
                              "[error] Saved 0 of 3; the base rejected SEN: " + blind +
                                  "; FF: " + blind + "; NIN: " + blind}));
  EXPECT_EQ(takeTranscript(), Lines{});
  EXPECT_EQ(staged(), "SEN=800 FF=80 NIN=9");
}

TEST_F(ModelSave, WithoutABaseOrEditsNothingHappens) {
  startWithoutBase();
  model().stage(P::forceFeedback, 80);
  changes_ = 0;
  model().saveStaged();
  EXPECT_FALSE(model().busy());
  EXPECT_EQ(staged(), "FF=80");
  base();
  settle();
  model().discardStaged();
  takeLog();
  takeTranscript();
  model().saveStaged();
  EXPECT_FALSE(model().busy());
  EXPECT_EQ(takeLog(), Lines{});
  EXPECT_EQ(takeTranscript(), Lines{});
}

TEST_F(ModelSave, ALateBaseIsWaitedFor) {
  start();
  behave([](SimulatedBehaviour& b) { b.answerDelay = Seconds(1.9); });
  stageThree();
  const auto begin = base().clock().now();
  save();
  EXPECT_EQ(takeLog().back(), "[log] Saved 3 changes to set C (Custom)");
  EXPECT_NEAR(Seconds(base().clock().now() - begin).count(), 3 * (0.25 + 1.9), 1e-6);
}

TEST_F(ModelSave, ABaseThatFallsSilentRejectsEverything) {
  start();
  behave([](SimulatedBehaviour& b) { b.silent = true; });
  stageThree();
  const auto begin = base().clock().now();
  save();
  const std::string timeout = menuTimeout;
  EXPECT_EQ(takeLog(), (Lines{"[log] Saving 3 changes\u2026",
                              "[error] Saved 0 of 3; the base rejected SEN: " + timeout +
                                  "; FF: " + timeout + "; NIN: " + timeout}));
  EXPECT_EQ(staged(), "SEN=800 FF=80 NIN=9");
  EXPECT_TRUE(model().isConnected());
  EXPECT_NEAR(Seconds(base().clock().now() - begin).count(), 3 * (0.25 + 2.0), 1e-6);
}

TEST_F(ModelSave, ABaseThatLeavesInTheMiddleRejectsTheRest) {
  start();
  stageThree();
  saveAndAtPause(1, [this] {
    base().unplug();
    waitUntil([this] { return model().statusLine() == noBaseStatus; });
    EXPECT_TRUE(model().busy());
    EXPECT_EQ(staged(), "");
    model().stage(P::vibration, 50);
  });
  EXPECT_EQ(takeLog(),
            (Lines{"[log] Saving 3 changes\u2026", disconnectedLine,
                   "[error] Saved 1 of 3; the base rejected FF: Device is not open; NIN: Device is "
                   "not open"}));
  base().transcript().waitForLines(6);
  EXPECT_EQ(takeTranscript(), (Lines{writeOf("d1", "41", "05"), commitPause, menuRequest,  //
                                     writeOf("d1", "50", "05"), commitPause, "close"}));
  EXPECT_FALSE(model().isConnected());
  EXPECT_FALSE(model().tuning());
  EXPECT_EQ(staged(), "SHO=50");
}

TEST_F(ModelSave, ABaseThatComesBackInTheMiddleIsNotTouchedByTheOldSave) {
  start();
  stageThree();
  saveAndAtPause(1, [this] {
    base().unplug();
    waitUntil([this] { return model().statusLine() == noBaseStatus; });
    base().plug();
    waitUntil([this] { return model().statusLine() == connectingStatus; });
    model().stage(P::vibration, 50);
  });
  EXPECT_EQ(takeLog(),
            (Lines{"[log] Saving 3 changes\u2026", disconnectedLine,
                   "[error] Saved 1 of 3; the base rejected FF: Device is not open; NIN: Device is "
                   "not open",
                   connectedLine}));
  EXPECT_EQ(staged(), "SHO=50");
  EXPECT_EQ(valueOf(P::sensitivity), 800);
  EXPECT_EQ(valueOf(P::naturalInertia), 5);
}

TEST_F(ModelSave, WhatIsStagedMeanwhileSurvives) {
  start();
  stageThree();
  saveAndAtPause(1, [this] {
    model().stage(P::vibration, 50);
    model().stage(P::forceFeedback, 81);
    model().revert(P::naturalInertia);
  });
  EXPECT_EQ(takeLog().back(), "[log] Saved 3 changes to set C (Custom)");
  EXPECT_EQ(staged(), "FF=81 SHO=50");
  EXPECT_EQ(valueOnBase(P::forceFeedback), 80);
  EXPECT_EQ(valueOnBase(P::naturalInertia), 9);
}

TEST_F(ModelSave, WhatIsStagedMeanwhileSurvivesARejection) {
  start();
  behave([](SimulatedBehaviour& b) { b.ignored = {P::forceFeedback, P::naturalInertia}; });
  stageThree();
  saveAndAtPause(0, [this] {
    model().stage(P::forceFeedback, 81);
    model().stage(P::vibration, 50);
  });
  EXPECT_EQ(staged(), "FF=81 SHO=50 NIN=9");
}

TEST_F(ModelSave, TwoSavesAreDoneOneAfterTheOther) {
  start();
  model().stage(P::forceFeedback, 80);
  model().saveStaged();
  model().stage(P::forceFeedback, 81);
  model().saveStaged();
  EXPECT_TRUE(model().busy());
  settle();
  EXPECT_EQ(takeLog(), (Lines{"[log] Saving 1 change\u2026", "[log] Saving 1 change\u2026",
                              "[log] Saved 1 change to set C (Custom)",
                              "[log] Saved 1 change to set C (Custom)"}));
  EXPECT_EQ(staged(), "");
  EXPECT_EQ(valueOf(P::forceFeedback), 81);
}

TEST_F(ModelSave, AfterADisconnectNothingOfItRemainsButTheLogLine) {
  start();
  model().stage(P::forceFeedback, 80);
  saveAndAtPause(0, [this] { model().disconnect(); });
  EXPECT_EQ(takeLog(), (Lines{"[log] Saving 1 change\u2026",
                              "[error] Saved 0 of 1; the base rejected FF: Device is not open"}));
  EXPECT_FALSE(model().tuning());
  EXPECT_EQ(staged(), "");
}

// Another program that has the base open.
class ModelSaveBesideAnother : public ModelSave {
 protected:
  void SetUp() override {
    start();
    other_ = WheelBase::create(info(0), base().clock());
    other_->connect();
    other_->fetchTuning(WheelBase::readTimeout);
    settle();
    takeTranscript();
  }

  void TearDown() override {
    other_->disconnect();
    other_->connection().join();
    ModelSave::TearDown();
  }

  std::shared_ptr<WheelBase> other_;
};

TEST_F(ModelSaveBesideAnother, KeepsWhatTheOtherWrote) {
  simulate([](SimulatedBase& simulated) { simulated.menu().put(P::naturalInertia, 9); });
  model().stage(P::forceFeedback, 80);
  model().stage(P::sensitivity, 800);
  save();
  EXPECT_EQ(takeLog().back(), "[log] Saved 2 changes to set C (Custom)");
  EXPECT_EQ(takeTranscript(),
            (Lines{menuRequest, writeOf("d1", "41", "09"), commitPause, menuRequest,  //
                   menuRequest, writeOf("d1", "50", "09"), commitPause, menuRequest}));
}

TEST_F(ModelSaveBesideAnother, ATurnThatDoesNotComeLeavesEverythingStaged) {
  ASSERT_TRUE(other_->connection().tryWriteLock());
  model().stage(P::forceFeedback, 80);
  save();
  EXPECT_EQ(takeLog().back(),
            "[error] Saved 0 of 1; the base rejected FF: Timed out waiting for another program "
            "that is writing to the base; try again when it has finished");
  EXPECT_EQ(staged(), "FF=80");
  model().factoryReset();
  settle();
  EXPECT_EQ(takeLog().back(),
            "[error] Factory reset failed: Timed out waiting for another program that is writing "
            "to the base; try again when it has finished");
}

TEST_F(ModelSaveBesideAnother, WhatIsLeftWhenTheSetChangesStaysStagedForThePersonToDecide) {
  stageThree();
  // After the read-back of the first value.
  clock_.at(Moment::answer, 1,
            [this] { simulate([](SimulatedBase& simulated) { simulated.menu().select(4); }); });
  save();
  const std::string refusal =
      "Invalid report: the base is in set 4 of the standard menu now, not in set 2 of the standard "
      "menu; write it again if it belongs there";
  EXPECT_EQ(takeLog(),
            (Lines{"[log] Saving 3 changes\u2026", "[error] Saved 1 of 3; the base rejected FF: " +
                                                       refusal + "; NIN: " + refusal}));
  EXPECT_EQ(takeTranscript(), (Lines{menuRequest, writeOf("d1", "41", "05"), commitPause,
                                     menuRequest, menuRequest, menuRequest}));
  EXPECT_EQ(staged(), "FF=80 NIN=9");
  EXPECT_EQ(model().tuning()->slot(), 4);

  save();
  EXPECT_EQ(takeLog().back(), "[log] Saved 2 changes to set C (Custom)");
  EXPECT_EQ(valueOnBase(P::forceFeedback), 80);
  EXPECT_EQ(valueOnBase(P::naturalInertia), 9);
}

}  // namespace
}  // namespace quorvane
