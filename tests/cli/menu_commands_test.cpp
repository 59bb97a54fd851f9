#include <gtest/gtest.h>

#include <string>

#include "tests/cli/command_line_fixture.h"

namespace quorvane {
namespace {

class MenuCommands : public CommandLineTest {
 protected:
  // Checks a document of device and menu.
  static void expectMenu(const std::string& out, int set, const char* mode) {
    Json document = Json::parse(out);
    Json tuning = document["tuning"];
    std::vector<std::string> keys;
    for (const auto& [key, value] : tuning.items()) keys.push_back(key);
    EXPECT_EQ(keys, (Lines{"set", "mode", "receivedAt", "raw", "values"}));
    EXPECT_EQ(tuning["set"], set);
    EXPECT_EQ(tuning["mode"], mode);
    document.erase("tuning");
    EXPECT_EQ(documentText(document), documentText(Json{{"device",
                                                         {{"id", simulatedID},
                                                          {"name", simulatedName},
                                                          {"productID", 32},
                                                          {"serialNumber", ""},
                                                          {"node", ""}}}}));
  }
};

using SelectCommand = MenuCommands;
using ModeCommand = MenuCommands;
using FactoryResetCommand = MenuCommands;

TEST_F(SelectCommand, SwitchesTheSet) {
  base();
  EXPECT_EQ(run("select 3"), (Outcome{ExitStatus::done, "Switched to set 3\n", ""}));
  EXPECT_EQ(transcript(),
            (Lines{"open", "> ff 03 01 03 +60", "pause 150 ms", "> ff 03 02 +61", "close"}));
}

TEST_F(SelectCommand, GivesOneDocument) {
  base();
  const Outcome outcome = run("--json select 5");
  EXPECT_EQ(outcome.status, ExitStatus::done);
  expectMenu(outcome.out, 5, "standard");
}

TEST_F(SelectCommand, UsesTheLayoutAskedFor) {
  base();
  run("--layout sdk select 3");
  EXPECT_EQ(transcript()[1], "> ff 03 01 00 03 +59");
  base().transcript().clear();
  run("--layout linux select 4");
  EXPECT_EQ(transcript()[1], "> ff 03 01 04 +60");
}

TEST_F(SelectCommand, ASetThatDoesNotExistIsAFailureAndSendsNothing) {
  base();
  for (const std::string set : {"0", "6", "-1", "260"}) {
    const std::string message = "Set " + set + ": there are sets 1 to 5";
    EXPECT_EQ(run("select " + set), (Outcome{ExitStatus::failed, "", message + "\n"}));
    EXPECT_EQ(run("--json select " + set),
              (Outcome{ExitStatus::failed, errorDocument("outOfRange", message), message + "\n"}));
  }
  EXPECT_EQ(transcript(), Lines{});
}

TEST_F(SelectCommand, ABaseThatStaysWhereItWasIsAFailure) {
  base();
  atPause(
      0, [this] { base().withBase([](SimulatedBase& simulated) { simulated.menu().select(2); }); });
  const std::string message = "The base did not switch to set 3; it is in set 2";
  EXPECT_EQ(run("--json select 3"),
            (Outcome{ExitStatus::failed, errorDocument("writeIgnored", message), message + "\n"}));
}

TEST_F(SelectCommand, TakesTheNamesOfTheStandardMenu) {
  base();
  EXPECT_EQ(run("select A"), (Outcome{ExitStatus::done, "Switched to set 1\n", ""}));
  EXPECT_EQ(transcript(), (Lines{"open", "> ff 03 02 +61", "> ff 03 01 01 +60", "pause 150 ms",
                                 "> ff 03 02 +61", "close"}));
  EXPECT_EQ(run("select a").out, "Already in set A (Auto Setup)\n");
  EXPECT_EQ(run("select c").out, "Switched to set 2\n");
  ASSERT_EQ(run("select 4").status, ExitStatus::done);
  EXPECT_EQ(run(std::vector<std::string>{"select", "C (Custom)"}).out,
            "Already in set C (Custom)\n");
  expectMenu(run("select C --json").out, 4, "standard");
}

TEST_F(SelectCommand, TheAdvancedMenuHasNoNames) {
  base().withBase([](SimulatedBase& simulated) { simulated.menu().toggleMode(); });
  const std::string message =
      "The sets of the advanced menu are called 1 to 5; A and C are those of the standard menu";
  EXPECT_EQ(run("select A"), (Outcome{ExitStatus::wrongUsage, "", message + "\n"}));
  EXPECT_EQ(transcript(), (Lines{"open", "> ff 03 02 +61", "close"}));
}

TEST_F(SelectCommand, ASilentBaseTimesOut) {
  change([](SimulatedBehaviour& behaviour) { behaviour.silent = true; });
  EXPECT_EQ(run("select 3"), (Outcome{ExitStatus::failed, "", std::string(timeoutText) + "\n"}));
}

TEST_F(ModeCommand, ShowsTheMode) {
  base();
  EXPECT_EQ(run("mode"), (Outcome{ExitStatus::done, "standard\n", ""}));
  EXPECT_EQ(transcript(), (Lines{"open", "> ff 03 02 +61", "close"}));
  base().withBase([](SimulatedBase& simulated) { simulated.menu().toggleMode(); });
  EXPECT_EQ(run("mode"), (Outcome{ExitStatus::done, "advanced\n", ""}));
  expectMenu(run("mode --json").out, 2, "advanced");
}

TEST_F(ModeCommand, SwitchesTheMode) {
  base();
  EXPECT_EQ(run("mode advanced"), (Outcome{ExitStatus::done, "Now in advanced mode\n", ""}));
  EXPECT_EQ(transcript(), (Lines{"open", "> ff 03 02 +61", "> ff 03 06 +61", "pause 400 ms",
                                 "> ff 03 02 +61", "close"}));
  EXPECT_EQ(run("mode standard"), (Outcome{ExitStatus::done, "Now in standard mode\n", ""}));
  expectMenu(run("mode advanced --json").out, 2, "advanced");
  EXPECT_EQ(run("mode STANDARD").out, "Now in standard mode\n");
  EXPECT_EQ(run("mode Advanced").out, "Now in advanced mode\n");
}

TEST_F(ModeCommand, SendsNoSwitchWhenTheModeIsThereAlready) {
  base();
  EXPECT_EQ(run("mode standard"), (Outcome{ExitStatus::done, "Now in standard mode\n", ""}));
  EXPECT_EQ(transcript(), (Lines{"open", "> ff 03 02 +61", "close"}));
}

TEST_F(ModeCommand, ABaseThatStaysInItsModeIsAFailure) {
  base();
  atPause(0, [this] {
    base().withBase([](SimulatedBase& simulated) { simulated.menu().toggleMode(); });
  });
  const std::string message = "Invalid report: the base still reports the standard menu";
  EXPECT_EQ(run("mode advanced --json"),
            (Outcome{ExitStatus::failed, errorDocument("invalidReport", message), message + "\n"}));
}

TEST_F(FactoryResetCommand, ResetsWhenItMeansIt) {
  base();
  EXPECT_EQ(run("factory-reset --yes"),
            (Outcome{ExitStatus::done, "Tuning menu reset to factory defaults\n", ""}));
  EXPECT_EQ(transcript(),
            (Lines{"open", "> ff 03 04 +61", "pause 400 ms", "> ff 03 02 +61", "close"}));
}

TEST_F(FactoryResetCommand, GivesOneDocument) {
  base();
  const Outcome outcome = run("factory-reset --yes --json");
  EXPECT_EQ(outcome.status, ExitStatus::done);
  expectMenu(outcome.out, 1, "standard");
  EXPECT_EQ(Json::parse(outcome.out)["tuning"]["values"]["FF"], 100);
}

TEST_F(FactoryResetCommand, WithoutYesItRefusesAndSendsNothing) {
  base();
  const std::string message =
      "This sets every set back to defaults and cannot be undone. Note the values you care about "
      "first (quorvanectl read); then run it again with --yes";
  EXPECT_EQ(run("factory-reset"), (Outcome{ExitStatus::wrongUsage, "", message + "\n"}));
  EXPECT_EQ(
      run("--json factory-reset"),
      (Outcome{ExitStatus::wrongUsage, errorDocument("wrongUsage", message), message + "\n"}));
  EXPECT_EQ(transcript(), Lines{});
}

}  // namespace
}  // namespace quorvane
