#include <gtest/gtest.h>

#include <QCoreApplication>
#include <functional>
#include <string>

#include "tests/app/model_fixture.h"

namespace quorvane {
namespace {

using P = TuningParameter;

class ModelOutcome : public ModelTest {
 protected:
  // Saves three edits, of which the base ignores the second.
  void saveWithOneNotTaken() {
    behave([](SimulatedBehaviour& b) { b.ignored = {P::forceFeedback}; });
    model().stage(P::sensitivity, 800);
    model().stage(P::forceFeedback, 80);
    model().stage(P::naturalInertia, 9);
    save();
  }

  void save() {
    model().saveStaged();
    settle();
  }

  void trySaving(TuningParameter parameter) {
    model().trySaving(parameter);
    settle();
  }

  // "SEN taken, FF not taken, NIN left unsaved".
  std::string outcomes() {
    std::string text;
    for (const auto& [parameter, outcome] : model().outcomes()) {
      if (!text.empty()) text += ", ";
      text += parameter.code();
      text += outcome == Outcome::taken      ? " taken"
              : outcome == Outcome::notTaken ? " not taken"
                                             : " left unsaved";
    }
    return text;
  }
};

TEST_F(ModelOutcome, IsNoneBeforeASave) {
  start();
  model().stage(P::forceFeedback, 80);
  EXPECT_EQ(outcomes(), "");
}

TEST_F(ModelOutcome, TellsWhichValuesOfASaveTheBaseTook) {
  start();
  saveWithOneNotTaken();
  EXPECT_EQ(outcomes(), "SEN taken, FF not taken, NIN taken");
  EXPECT_EQ(count(model().outcomes(), Outcome::taken), 2U);
  EXPECT_EQ(count(model().outcomes(), Outcome::notTaken), 1U);
}

TEST_F(ModelOutcome, EachValueTakenIsToldAtOnce) {
  start();
  Lines taken;
  QObject::connect(&model(), &AppModel::valueTaken, [&](TuningParameter parameter) {
    taken.push_back(std::string(parameter.code()) + (model().isWriting() ? " while writing" : ""));
  });
  saveWithOneNotTaken();
  EXPECT_EQ(taken, (Lines{"SEN while writing", "NIN while writing"}));
}

TEST_F(ModelOutcome, NotTakenEndsWithAnEditOfTheValueItsRevertOrADiscard) {
  start();
  struct Case {
    std::function<void()> end;
    std::string left;
  };
  const std::string taken = "SEN taken, NIN taken";
  for (const auto& [end, left] :
       {Case{[this] { model().stage(P::forceFeedback, 81); }, taken},
        Case{[this] { model().stage(P::forceFeedback, 65); }, taken},
        Case{[this] { model().revert(P::forceFeedback); }, taken},
        Case{[this] { model().discardStaged(); }, ""},
        Case{[this] { model().stage(P::forceFeedback, 80); }, "SEN taken, FF not taken, NIN taken"},
        Case{[this] { model().stage(P::vibration, 50); }, "SEN taken, FF not taken, NIN taken"}}) {
    saveWithOneNotTaken();
    end();
    EXPECT_EQ(outcomes(), left);
    model().discardStaged();
    behave([](SimulatedBehaviour& b) { b.ignored.clear(); });
    model().stage(P::sensitivity, 900);
    model().stage(P::naturalInertia, 5);
    save();
  }
}

TEST_F(ModelOutcome, NotTakenEndsWithASaveThatIsTaken) {
  start();
  saveWithOneNotTaken();
  save();
  EXPECT_EQ(outcomes(), "FF not taken");
  behave([](SimulatedBehaviour& b) { b.ignored.clear(); });
  save();
  EXPECT_EQ(outcomes(), "FF taken");
}

TEST_F(ModelOutcome, AValueThatWasEditedDuringTheSaveHasNone) {
  start();
  behave([](SimulatedBehaviour& b) { b.ignored = {P::forceFeedback}; });
  model().stage(P::forceFeedback, 80);
  Gate gate;
  clock_.at(Moment::pause, 0, [&] { gate.pass(); });
  model().saveStaged();
  gate.awaitArrival();
  model().stage(P::forceFeedback, 81);
  gate.open();
  settle();
  EXPECT_EQ(staged(), "FF=81");
  EXPECT_EQ(outcomes(), "");
}

TEST_F(ModelOutcome, LeavesWithTheBase) {
  start();
  saveWithOneNotTaken();
  base().unplug();
  settle();
  EXPECT_EQ(outcomes(), "");
}

TEST_F(ModelOutcome, TryingAgainWritesTheOneValueOnce) {
  start();
  saveWithOneNotTaken();
  behave([](SimulatedBehaviour& b) { b.ignored.clear(); });
  model().stage(P::vibration, 50);
  takeLog();
  takeTranscript();
  trySaving(P::forceFeedback);
  EXPECT_EQ(takeTranscript(), (Lines{writeOf("d1", "50", "09"), commitPause, menuRequest}));
  EXPECT_EQ(takeLog(),
            (Lines{"[log] Saving 1 change\u2026", "[log] Saved 1 change to set C (Custom)"}));
  EXPECT_EQ(staged(), "SHO=50");
  EXPECT_EQ(outcomes(), "FF taken");
  EXPECT_EQ(valueOf(P::forceFeedback), 80);
}

TEST_F(ModelOutcome, TryingAgainMayFailAgain) {
  start();
  saveWithOneNotTaken();
  takeLog();
  takeTranscript();
  trySaving(P::forceFeedback);
  EXPECT_EQ(takeTranscript().size(), 3U);
  EXPECT_EQ(takeLog(), (Lines{"[log] Saving 1 change\u2026",
                              "[error] Saved 0 of 1; the base rejected FF: The base ignored the FF "
                              "write; it still reports 65"}));
  EXPECT_EQ(staged(), "FF=80");
  EXPECT_EQ(outcomes(), "FF not taken");
}

TEST_F(ModelOutcome, WhatIsNotStagedIsNotTriedAgain) {
  start();
  trySaving(P::forceFeedback);
  EXPECT_EQ(takeTranscript(), Lines{});
  EXPECT_EQ(takeLog(), Lines{});
}

TEST_F(ModelOutcome, ApplyingAPresetLeavesEditsUnsaved) {
  start();
  saveWithOneNotTaken();
  model().stage(P::vibration, 50);
  model().apply(presetOf("Wet", {{P::vibration, 80}}));
  settle();
  EXPECT_EQ(staged(), "FF=80 SHO=50");
  EXPECT_EQ(outcomes(), "FF not taken, SHO left unsaved");
  model().stage(P::vibration, 60);
  EXPECT_EQ(outcomes(), "FF not taken");
}

TEST_F(ModelOutcome, ApplyingAPresetWithoutEditsHasNone) {
  start();
  model().apply(presetOf("Wet", {{P::vibration, 80}}));
  settle();
  EXPECT_EQ(outcomes(), "");
}

}  // namespace
}  // namespace quorvane
