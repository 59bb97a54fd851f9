#include <gtest/gtest.h>

#include <QCoreApplication>
#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/app/model_fixture.h"

namespace quorvane {
namespace {

using P = TuningParameter;

// "1 of 3", "1 of 3 of PRESET" or "none".
std::string textOf(const std::optional<AppModel::Progress>& progress) {
  if (!progress) return "none";
  std::string text = std::to_string(progress->done) + " of " + std::to_string(progress->total);
  if (progress->preset) text += " of " + progress->preset->text();
  return text;
}

class ModelProgress : public ModelTest {
 protected:
  // The progress at every change while the action runs, and after it.
  Lines watch(const std::function<void()>& action) {
    Lines seen;
    const auto watching =
        QObject::connect(&model(), &AppModel::changed, [&] { note(seen, model().progress()); });
    action();
    settle();
    QObject::disconnect(watching);
    note(seen, model().progress());
    return seen;
  }

  void stageThree() {
    model().stage(P::sensitivity, 800);
    model().stage(P::forceFeedback, 80);
    model().stage(P::naturalInertia, 9);
  }

 private:
  static void note(Lines& seen, const std::optional<AppModel::Progress>& progress) {
    std::string line = textOf(progress);
    if (seen.empty() || seen.back() != line) seen.push_back(std::move(line));
  }
};

class ModelReadEverything : public ModelTest {};

class ModelMenuChanges : public ModelTest {
 protected:
  // Records the force feedback before and after each change made at the base: "65 to 70".
  void watchChanges() {
    QObject::connect(&model(), &AppModel::menuChangedAtBase, [this](const TuningSnapshot& before) {
      changes_.push_back(std::to_string(before.value(P::forceFeedback, model().product())) +
                         " to " + std::to_string(valueOf(P::forceFeedback)));
    });
  }

  void startWatching() {
    start();
    watchChanges();
  }

  Lines changes_;
};

TEST_F(ModelProgress, IsNoneWhileNothingIsWritten) {
  start();
  EXPECT_EQ(model().progress(), std::nullopt);
  EXPECT_EQ(watch([this] { model().refresh(); }), (Lines{"none"}));
  EXPECT_EQ(watch([this] { model().selectSlot(4); }), (Lines{"none"}));
}

TEST_F(ModelProgress, CountsTheValuesOfASave) {
  start();
  stageThree();
  EXPECT_EQ(watch([this] { model().saveStaged(); }),
            (Lines{"none", "0 of 3", "1 of 3", "2 of 3", "none"}));
}

TEST_F(ModelProgress, ValuesThatTheBaseRefusesCountToo) {
  start();
  behave([](SimulatedBehaviour& b) { b.ignored = {P::sensitivity, P::forceFeedback}; });
  stageThree();
  EXPECT_EQ(watch([this] { model().saveStaged(); }),
            (Lines{"none", "0 of 3", "1 of 3", "2 of 3", "none"}));
  EXPECT_EQ(staged(), "SEN=800 FF=80");
}

TEST_F(ModelProgress, CountsTheValuesOfAPresetThatTheBaseHas) {
  start();
  const TuningPreset wet = presetOf(
      "Wet", {{P::slot, 4}, {P::driftMode, 2}, {P::forceFeedback, 80}, {P::naturalInertia, 9}});
  const std::string ofWet = " of " + wet.id.text();
  EXPECT_EQ(watch([&] { model().apply(wet); }),
            (Lines{"none", "0 of 2" + ofWet, "1 of 2" + ofWet, "2 of 2" + ofWet, "none"}));
}

TEST_F(ModelProgress, APresetWithoutValuesForTheBaseHasNoneToCount) {
  start();
  const TuningPreset drift = presetOf("Drift", {{P::driftMode, 2}});
  EXPECT_EQ(watch([&] { model().apply(drift); }),
            (Lines{"none", "0 of 0 of " + drift.id.text(), "none"}));
}

TEST_F(ModelProgress, EndsWithTheExchangeAlsoWhenTheBaseLeaves) {
  start();
  stageThree();
  const auto gate = std::make_shared<Gate>();
  clock_.at(Moment::pause, 1, [gate] { gate->pass(); });
  model().saveStaged();
  gate->awaitArrival();
  base().waitUntilQuiet();
  QCoreApplication::sendPostedEvents();
  EXPECT_EQ(textOf(model().progress()), "1 of 3");
  base().unplug();
  waitUntil([this] { return model().statusLine() == noBaseStatus; });
  gate->open();
  settle();
  EXPECT_EQ(textOf(model().progress()), "none");
}

TEST_F(ModelProgress, OfTwoSavesBeginsAgain) {
  start();
  EXPECT_EQ(
      watch([this] {
        stageThree();
        model().saveStaged();
        model().stage(P::forceFeedback, 81);
        model().saveStaged();
      }),
      (Lines{"none", "0 of 3", "1 of 3", "2 of 3", "none", "0 of 3", "1 of 3", "2 of 3", "none"}));
}

TEST_F(ModelMenuChanges, AreToldWhenNobodyHereAsked) {
  startWatching();
  base().turn(P::forceFeedback, 70);
  settle();
  base().turn(P::forceFeedback, 71);
  settle();
  EXPECT_EQ(changes_, (Lines{"65 to 70", "70 to 71"}));
}

TEST_F(ModelMenuChanges, ComeAfterTheMenuHasBeenPublished) {
  startWatching();
  Lines order;
  QObject::connect(&model(), &AppModel::changed, [&] { order.emplace_back("changed"); });
  QObject::connect(&model(), &AppModel::menuChangedAtBase, [&] { order.emplace_back("at base"); });
  base().turn(P::forceFeedback, 70);
  settle();
  EXPECT_EQ(order, (Lines{"changed", "at base"}));
}

TEST_F(ModelMenuChanges, AReportOfTheSameMenuIsNone) {
  startWatching();
  base().turn(P::forceFeedback, 65);
  settle();
  EXPECT_EQ(changes_, Lines{});
}

TEST_F(ModelMenuChanges, WhatWasAskedForIsNone) {
  startWatching();
  model().stage(P::forceFeedback, 80);
  model().saveStaged();
  settle();
  model().apply(presetOf("Wet", {{P::forceFeedback, 90}}));
  settle();
  model().selectSlot(1);
  settle();
  model().toggleMode();
  settle();
  model().factoryReset();
  settle();
  simulate([](SimulatedBase& simulated) { simulated.menu().put(P::forceFeedback, 42); });
  model().refresh();
  settle();
  EXPECT_EQ(valueOf(P::forceFeedback), 42);
  EXPECT_EQ(changes_, Lines{});
}

TEST_F(ModelMenuChanges, TheFirstMenuOfASessionIsNone) {
  behave([](SimulatedBehaviour& b) { b.tuningSilent = true; });
  startWatching();
  behave([](SimulatedBehaviour& b) { b.tuningSilent = false; });
  base().turn(P::forceFeedback, 70);
  settle();
  EXPECT_EQ(valueOf(P::forceFeedback), 70);
  base().unplug();
  settle();
  simulate([](SimulatedBase& simulated) { simulated.menu().put(P::forceFeedback, 42); });
  base().plug();
  settle();
  EXPECT_EQ(valueOf(P::forceFeedback), 42);
  EXPECT_EQ(changes_, Lines{});
}

TEST_F(ModelMenuChanges, LeaveWhatIsStagedAlone) {
  startWatching();
  model().stage(P::forceFeedback, 80);
  base().turn(P::forceFeedback, 70);
  settle();
  EXPECT_EQ(staged(), "FF=80");
  EXPECT_EQ(takeLog(), Lines{});
}

TEST_F(ModelReadEverything, ReadsMenuAndIdentity) {
  start();
  simulate([](SimulatedBase& simulated) {
    simulated.menu().put(P::forceFeedback, 42);
    simulated.attachWheel(0x12, 7);
  });
  model().readEverything();
  EXPECT_TRUE(model().busy());
  settle();
  EXPECT_EQ(takeTranscript(), (Lines{menuRequest, identityOn, identityRequest}));
  EXPECT_EQ(takeLog(), Lines{});
  EXPECT_EQ(valueOf(P::forceFeedback), 42);
  EXPECT_EQ(model().identity()->wheelCode(), 0x12);
}

TEST_F(ModelReadEverything, IsCalledOtherwiseThanARefresh) {
  start();
  behave([](SimulatedBehaviour& b) { b.silent = true; });
  model().readEverything();
  settle();
  model().refresh();
  settle();
  const std::string timeout = menuTimeout;
  EXPECT_EQ(takeLog(), (Lines{"[error] Read failed: " + timeout,
                              "[error] Read the tuning menu failed: " + timeout}));
}

TEST_F(ModelReadEverything, WithoutABaseIsAnErrorAtOnce) {
  startWithoutBase();
  model().readEverything();
  EXPECT_FALSE(model().busy());
  EXPECT_EQ(takeLog(), (Lines{"[error] No base connected"}));
}

TEST_F(ModelProgress, TellsWhetherTheBaseIsBeingChanged) {
  start();
  const std::vector<std::pair<bool, std::function<void()>>> actions{
      {true, [this] { model().saveStaged(); }},
      {true, [this] { model().apply(TuningPreset::builtIn().front()); }},
      {true, [this] { model().selectSlot(2); }},
      {true, [this] { model().toggleMode(); }},
      {true, [this] { model().factoryReset(); }},
      {false, [this] { model().refresh(); }},
      {false, [this] { model().readEverything(); }}};
  for (const auto& [isWrite, action] : actions) {
    model().stage(P::forceFeedback, valueOf(P::forceFeedback) == 80 ? 81 : 80);
    action();
    EXPECT_EQ(model().isWriting(), isWrite);
    settle();
    EXPECT_FALSE(model().isWriting());
  }
}

TEST_F(ModelProgress, WritesCanBeWaitedFor) {
  start();
  model().waitForWrites(std::chrono::milliseconds(0));
  model().stage(P::forceFeedback, 80);
  model().saveStaged();
  model().waitForWrites(std::chrono::seconds(10));
  EXPECT_EQ(valueOnBase(P::forceFeedback), 80);
  EXPECT_TRUE(model().isWriting()) << "the event loop tells of it";
  settle();
  EXPECT_FALSE(model().isWriting());
}

}  // namespace
}  // namespace quorvane
