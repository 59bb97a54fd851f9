#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/file.h"
#include "support/thread.h"
#include "tests/app/model_fixture.h"

namespace quorvane {
namespace {

using P = TuningParameter;

class ModelTrouble : public ModelTest {};

class ModelExamination : public ModelTest {
 protected:
  void examine() {
    model().examine();
    settle();
  }

  CheckOutcome outcome(const std::string& id) {
    for (const DoctorCheck& check : model().examination().value().diagnosis.checks) {
      if (check.id == id) return check.outcome;
    }
    throw std::runtime_error("there is no check " + id);
  }

  std::string examinedBase() {
    const auto& base = model().examination().value().diagnosis.facts.base;
    return base ? base->id : "none";
  }
};

TEST_F(ModelTrouble, IsThatThereIsNoBase) {
  startWithoutBase();
  EXPECT_TRUE(model().needsExamination());
  base();
  settle();
  EXPECT_FALSE(model().needsExamination());
  base().unplug();
  settle();
  EXPECT_TRUE(model().needsExamination());
}

TEST_F(ModelTrouble, IsNotThatABaseIsBeingOpened) {
  base();
  create();
  EXPECT_TRUE(model().busy());
  EXPECT_FALSE(model().needsExamination());
}

TEST_F(ModelTrouble, IsThatABaseCannotBeOpened) {
  base().failOpenWith(HIDReturnCode::notPermitted);
  start();
  EXPECT_TRUE(model().needsExamination());
}

TEST_F(ModelTrouble, IsThatTheMenuWasNotToldOnConnecting) {
  behave([](SimulatedBehaviour& b) { b.tuningSilent = true; });
  start();
  EXPECT_TRUE(model().isConnected());
  EXPECT_TRUE(model().needsExamination());
  base().turn(P::forceFeedback, 42);
  settle();
  EXPECT_FALSE(model().needsExamination());
}

TEST_F(ModelTrouble, IsThatALaterReadFails) {
  for (const auto read : {&AppModel::refresh, &AppModel::readEverything}) {
    start();
    behave([](SimulatedBehaviour& b) { b.tuningSilent = true; });
    (model().*read)();
    settle();
    EXPECT_TRUE(model().tuning());
    EXPECT_TRUE(model().needsExamination());
    behave([](SimulatedBehaviour& b) { b.tuningSilent = false; });
    (model().*read)();
    settle();
    EXPECT_FALSE(model().needsExamination());
    end();
  }
}

TEST_F(ModelTrouble, IsNotThatSomethingElseFails) {
  start();
  behave([](SimulatedBehaviour& b) { b.ignored = {P::forceFeedback}; });
  model().stage(P::forceFeedback, 80);
  model().saveStaged();
  settle();
  EXPECT_FALSE(takeLog().empty());
  EXPECT_FALSE(model().needsExamination());
}

TEST_F(ModelExamination, IsNoneUntilItIsAskedFor) {
  startWithoutBase();
  EXPECT_FALSE(model().examination());
  EXPECT_FALSE(model().isExamining());
  EXPECT_EQ(survey_.timesTold(), 0);
}

TEST_F(ModelExamination, TellsItsChecksAndWhenItWas) {
  startWithoutBase();
  const auto before = WallClock::now();
  examine();
  ASSERT_TRUE(model().examination());
  EXPECT_GE(model().examination()->time, before);
  EXPECT_LE(model().examination()->time, WallClock::now());
  EXPECT_FALSE(model().examination()->diagnosis.passed());
  EXPECT_EQ(outcome("usb"), CheckOutcome::failed);
  EXPECT_EQ(takeLog(), Lines{});
  EXPECT_EQ(model().statusLine(), noBaseStatus);
}

TEST_F(ModelExamination, RunsBesideTheMainThreadAndIsBusy) {
  startWithoutBase();
  Gate gate;
  survey_.beforeTelling([&] { gate.pass(); });
  model().examine();
  gate.awaitArrival();
  EXPECT_TRUE(model().isExamining());
  EXPECT_TRUE(model().busy());
  EXPECT_FALSE(model().examination());
  gate.open();
  settle();
  EXPECT_FALSE(model().isExamining());
  EXPECT_FALSE(model().busy());
  EXPECT_TRUE(model().examination());
}

TEST_F(ModelExamination, IsOneHoweverOftenItIsAskedForMeanwhile) {
  startWithoutBase();
  for (int i = 0; i < 5; ++i) model().examine();
  settle();
  EXPECT_EQ(survey_.timesTold(), 1);
  examine();
  EXPECT_EQ(survey_.timesTold(), 2);
}

TEST_F(ModelExamination, WaitsForItsTurn) {
  behave([](SimulatedBehaviour& b) { b.tuningSilent = true; });
  start();
  model().refresh();
  model().examine();
  survey_.beforeTelling([this] { EXPECT_EQ(takeTranscript().size(), 1U); });
  settle();
  EXPECT_EQ(survey_.timesTold(), 1);
}

TEST_F(ModelExamination, LooksAtTheUsersPresets) {
  std::filesystem::create_directories(store_->fileURL().parent_path());
  replaceFile(store_->fileURL(), "no presets");
  startWithoutBase();
  examine();
  EXPECT_EQ(model().examination()->diagnosis.facts.presets.file, store_->fileURL());
  EXPECT_EQ(outcome("presets"), CheckOutcome::failed);
}

TEST_F(ModelExamination, OfABaseThatDoesNotTellItsMenuSaysSo) {
  behave([](SimulatedBehaviour& b) { b.tuningSilent = true; });
  start();
  examine();
  EXPECT_EQ(outcome("identity"), CheckOutcome::passed);
  EXPECT_EQ(outcome("tuning"), CheckOutcome::failed);
  EXPECT_TRUE(model().isConnected());
}

TEST_F(ModelExamination, GoesWhenTheMenuIsToldAtLast) {
  behave([](SimulatedBehaviour& b) { b.tuningSilent = true; });
  start();
  examine();
  EXPECT_TRUE(model().examination());
  behave([](SimulatedBehaviour& b) { b.tuningSilent = false; });
  model().refresh();
  settle();
  EXPECT_FALSE(model().examination());
  base().unplug();
  settle();
  EXPECT_FALSE(model().examination()) << "an old one is not brought up for a new trouble";
}

TEST_F(ModelExamination, ThatFindsNothingWrongEndsTheTrouble) {
  behave([](SimulatedBehaviour& b) { b.tuningSilent = true; });
  start();
  behave([](SimulatedBehaviour& b) { b.tuningSilent = false; });
  examine();
  EXPECT_FALSE(model().needsExamination()) << "its own question was answered";
  EXPECT_FALSE(model().examination());
}

TEST_F(ModelExamination, StaysWhileABaseIsTriedAndGoesOnceItIsConnected) {
  startWithoutBase();
  examine();
  Gate gate;
  clock_.at(Moment::request, 0, [&] { gate.pass(); });
  base();
  waitUntil([this] { return model().busy(); });
  gate.awaitArrival();
  EXPECT_TRUE(model().examination());
  EXPECT_TRUE(model().needsExamination());
  gate.open();
  settle();
  EXPECT_FALSE(model().examination());
  EXPECT_FALSE(model().needsExamination());
}

TEST_F(ModelExamination, IsOfTheBaseThatIsConnectedOrWouldBe) {
  useRealTime();
  attach(0x0006).failOpenWith(HIDReturnCode::exclusiveAccess);
  attach(0x0020).failOpenWith(HIDReturnCode::exclusiveAccess);
  backend_.setCanWatch(false);
  create();
  settle();
  examine();
  EXPECT_EQ(examinedBase(), info(0).id) << "the first, which was tried";
  model().connect(info(1));
  settle();
  examine();
  EXPECT_EQ(examinedBase(), info(1).id) << "the one that was tried by hand";
  model().devicesChanged({info(0)});
  settle();
  examine();
  EXPECT_EQ(examinedBase(), info(0).id) << "what is left";
  model().devicesChanged({});
  end();
  create("nobody");
  settle();
  examine();
  EXPECT_EQ(examinedBase(), info(0).id) << "none is named: the first";
  takeLog();
}

TEST_F(ModelExamination, IsLeftAtOnceWhenTheModelEnds) {
  behave([](SimulatedBehaviour& b) { b.tuningSilent = true; });
  start();
  const auto gate = std::make_shared<Gate>();
  survey_.beforeTelling([gate] { gate->pass(); });
  model().examine();
  gate->awaitArrival();
  base().transcript().clear();
  int requests = 0;
  clock_.at(Moment::request, 0, [&] { ++requests; });
  const Thread opener("opener", [&] {
    base().transcript().waitForLines(1);  // the model's destructor has closed its session
    gate->open();
  });
  end();
  EXPECT_EQ(requests, 0) << "it waited for an answer";
}

TEST_F(ModelExamination, MakesAReportWithTheEndOfTheLog) {
  behave([](SimulatedBehaviour& b) { b.tuningSilent = true; });
  start();
  for (int i = 0; i < 200; ++i) {
    model().stage(P::forceFeedback, i % 50);
    model().discardStaged();
  }
  examine();
  const std::string report = model().report();
  for (const DoctorCheck& check : model().examination()->diagnosis.checks) {
    EXPECT_NE(report.find(check.title), std::string::npos) << check.title;
  }
  std::size_t lines = 0;
  for (std::size_t at = 0; (at = report.find("Z Discarded 1 unsaved change", at)) != report.npos;
       ++at) {
    ++lines;
  }
  EXPECT_EQ(lines, 100U);
}

TEST_F(ModelExamination, TellsErrorsInTheReportApart) {
  base().failOpenWith(HIDReturnCode::exclusiveAccess);
  start();
  examine();
  EXPECT_NE(model().report().find("Z [error] Could not open "), std::string::npos);
}

TEST_F(ModelExamination, SavesTheReportWhereThePersonSays) {
  startWithoutBase();
  examine();
  const std::string report = model().report();
  model().saveReport();
  EXPECT_EQ(panels_.takeRequests(),
            (Lines{"save: Save the report [Save] report, quorvane-report.txt"}));
  const std::filesystem::path file = directory_ / "report.txt";
  base();  // plugs in a base, which ends the fault that the report describes
  settle();
  takeLog();
  panels_.answer(file);
  EXPECT_EQ(readFile(file, 1U << 20), report);
  EXPECT_EQ(takeLog(), (Lines{"[log] Saved the report to " + file.string() +
                              ". Look it over before you send it."}));
}

TEST_F(ModelExamination, AReportThatCannotBeSavedIsAnError) {
  startWithoutBase();
  examine();
  panels_.answerAtOnce(directory_ / "missing" / "report.txt");
  model().saveReport();
  const Lines log = takeLog();
  ASSERT_EQ(log.size(), 1U);
  EXPECT_TRUE(log[0].starts_with("[error] Could not save the report: ")) << log[0];
}

}  // namespace
}  // namespace quorvane
