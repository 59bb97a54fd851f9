#include <gtest/gtest.h>

#include "cli/base_access.h"
#include "tests/cli/preset_fixture.h"
#include "tests/cli/receipts.h"

namespace quorvane {
namespace {

using ApplyPreset = PresetTest;
using SavePreset = PresetTest;

// The values of the default base's menu.
const TuningPreset::Values menuValues{{"ACP", 1},   {"BLI", 101}, {"DPR", 50},  {"FEI", 100},
                                      {"FF", 65},   {"FFS", 1},   {"FOR", 100}, {"FUL", 0},
                                      {"INT", 11},  {"NDP", 25},  {"NFR", 10},  {"NIN", 5},
                                      {"SEN", 900}, {"SHO", 100}, {"SPR", 100}, {"brF", 50}};

TEST_F(ApplyPreset, WritesItsValuesInMenuOrderAndReadsEachBack) {
  base();
  store_.save({ownPreset(firstID, "My GT7", {{"ACP", 3}, {"BLI", 40}, {"FF", 80}, {"SEN", 0}})});
  EXPECT_EQ(presets({"apply", "my gt7"}), (Outcome{ExitStatus::done,
                                                   "SEN  AUT (250 ms)\n"
                                                   "FF   80 % (250 ms)\n"
                                                   "BLI  40 % (250 ms)\n"
                                                   "ACP  Bt (brake / throttle) (250 ms)\n",
                                                   ""}));
  EXPECT_EQ(transcript(), linesOfFourWrites());
}

TEST_F(ApplyPreset, GivesOneDocument) {
  base();
  store_.save({ownPreset(firstID, "Mine", {{"NFR", 20}, {"FF", 80}})});
  EXPECT_EQ(
      run("presets apply Mine --json"),
      (Outcome{ExitStatus::done,
               results({receipt("FF", 80, 80, nullptr, 250), receipt("NFR", 20, 20, nullptr, 250)}),
               ""}));
}

TEST_F(ApplyPreset, PrintsWhatSetPrints) {
  store_.save({ownPreset(firstID, "Mine", {{"FF", 101}, {"NFR", 20}, {"SEN", 800}})});
  change([](SimulatedBehaviour& behaviour) {
    behaviour.ignored = {TuningParameter::naturalFriction};
  });
  for (const std::string json : {"", " --json"}) {
    base().transcript().clear();
    const Outcome applied = run("presets apply Mine" + json);
    const Lines appliedTranscript = transcript();
    base().transcript().clear();
    EXPECT_EQ(applied, run("set SEN=800 FF=101 NFR=20" + json));
    EXPECT_EQ(appliedTranscript, transcript());
    EXPECT_EQ(applied.status, ExitStatus::failed);
  }
}

TEST_F(ApplyPreset, TakesABuiltInOneFromEveryProduct) {
  base();
  const Outcome outcome = presets({"apply", "Gearwerk 2025, Gran Turismo 7 (8 Nm)"});
  EXPECT_EQ(outcome, (Outcome{ExitStatus::done,
                              "SEN  AUT (250 ms)\n"
                              "FF   100 % (250 ms)\n"
                              "BLI  75 % (250 ms)\n"
                              "FFS  PEA (250 ms)\n"
                              "FOR  100 % (250 ms)\n"
                              "SPR  100 % (250 ms)\n"
                              "DPR  100 % (250 ms)\n"
                              "NDP  70 % (250 ms)\n"
                              "NFR  35 % (250 ms)\n"
                              "brF  90 % (250 ms)\n"
                              "FEI  100 % (250 ms)\n"
                              "INT  3 (250 ms)\n"
                              "NIN  5 % (250 ms)\n",
                              ""}));
}

TEST_F(ApplyPreset, NamesWhatTheBaseLacksAndNeverSwitchesTheSet) {
  attach(0x0001);
  store_.save({ownPreset(firstID, "Mine",
                         {{"FF", 80}, {"NFR", 20}, {"SHO", 50}, {"SLOT", 3}, {"XYZ", 1}})});
  EXPECT_EQ(run("presets apply Mine"),
            (Outcome{ExitStatus::done, "FF   80 % (250 ms)\n",
                     "Not on the menu of ClubSport Wheel Base V2, and left out: SHO NFR XYZ\n"}));
}

TEST_F(ApplyPreset, WithNothingForTheBaseIsAFailureThatSendsNothing) {
  attach(0x0001);
  store_.save({ownPreset(firstID, "Mine", {{"NFR", 20}, {"SLOT", 3}, {"XYZ", 1}}),
               ownPreset(secondID, "Empty")});
  const std::string message = "\"Mine\" has no value for ClubSport Wheel Base V2";
  EXPECT_EQ(run("presets apply Mine"), (Outcome{ExitStatus::failed, "", message + "\n"}));
  EXPECT_EQ(run("presets apply Mine --json"),
            (Outcome{ExitStatus::failed, errorDocument("notAvailable", message), message + "\n"}));
  EXPECT_EQ(
      run("presets apply Empty"),
      (Outcome{ExitStatus::failed, "", "\"Empty\" has no value for ClubSport Wheel Base V2\n"}));
  EXPECT_EQ(transcript(), (Lines{"open", "close", "open", "close", "open", "close"}));
}

TEST_F(ApplyPreset, GoesOnAfterFailures) {
  store_.save({ownPreset(firstID, "Mine", {{"FF", 80}, {"NFR", 20}, {"NIN", 7}, {"SEN", 800}})});
  change([](SimulatedBehaviour& behaviour) {
    behaviour.ignored = {TuningParameter::forceFeedback, TuningParameter::naturalFriction};
  });
  const std::string ff = "The base ignored the FF write; it still reports 65";
  const std::string nfr = "The base ignored the NFR write; it still reports 10";
  EXPECT_EQ(run("presets apply Mine"), (Outcome{ExitStatus::failed,
                                                "SEN  800 deg (250 ms)\n"
                                                "FF   not written: " +
                                                    ff +
                                                    "\n"
                                                    "NFR  not written: " +
                                                    nfr +
                                                    "\n"
                                                    "NIN  7 % (250 ms)\n",
                                                "2 of 4 values not written\n"}));
  EXPECT_EQ(
      run("presets apply Mine --json"),
      (Outcome{ExitStatus::failed,
               results({receipt("SEN", 800, 800, nullptr, 250), receipt("FF", 80, 65, ff, 250),
                        receipt("NFR", 20, 10, nfr, 250), receipt("NIN", 7, 7, nullptr, 250)}),
               "2 of 4 values not written\n"}));
}

TEST_F(ApplyPreset, AnInterruptionFinishesTheValueInFlight) {
  base();
  store_.save({ownPreset(firstID, "Mine", {{"FF", 80}, {"NFR", 20}, {"NIN", 7}, {"SEN", 800}})});
  atPause(1, [this] { interrupt(); });
  EXPECT_EQ(run("presets apply Mine"),
            (Outcome{ExitStatus::interrupted, "SEN  800 deg (250 ms)\nFF   80 % (250 ms)\n",
                     "Interrupted; not written: NFR NIN\n"}));
  EXPECT_EQ(transcript().back(), "close");
  EXPECT_EQ(transcript().size(), 9U);
}

TEST_F(ApplyPreset, AnInterruptionLeavesAWholeDocument) {
  base();
  store_.save({ownPreset(firstID, "Mine", {{"FF", 80}, {"SEN", 800}})});
  atPause(0, [this] { interrupt(); });
  EXPECT_EQ(run("presets apply Mine --json"),
            (Outcome{ExitStatus::interrupted, results({receipt("SEN", 800, 800, nullptr, 250)}),
                     "Interrupted; not written: FF\n"}));
}

TEST_F(ApplyPreset, ASilentBaseFailsBeforeAnythingIsWritten) {
  change([](SimulatedBehaviour& behaviour) { behaviour.silent = true; });
  EXPECT_EQ(presets({"apply", factoryName(), "--json"}),
            (Outcome{ExitStatus::failed, errorDocument("timeout", timeoutText),
                     std::string(timeoutText) + "\n"}));
  EXPECT_EQ(transcript(), (Lines{"open", "> ff 03 02 +61", "close"}));
}

TEST_F(ApplyPreset, WithoutABaseSaysWhatToDo) {
  EXPECT_EQ(presets({"apply", factoryName()}),
            (Outcome{ExitStatus::failed, "",
                     std::string("HID I/O failed: device not found\n") + noBaseHint + "\n"}));
}

TEST_F(ApplyPreset, AnUnknownNameTouchesNoBase) {
  base();
  EXPECT_EQ(run("presets apply redline"), (Outcome{ExitStatus::wrongUsage, "",
                                                   "There is no preset \"redline\". There are:\n"
                                                   "  Redline Lab 2025, Gran Turismo 7 (8 Nm)\n"}));
  EXPECT_EQ(transcript(), Lines{});
}

TEST_F(ApplyPreset, GoesOnWithoutAStoreThatCannotBeRead) {
  base();
  damageStore();
  const Outcome outcome = presets({"apply", factoryName()});
  EXPECT_EQ(outcome.status, ExitStatus::done);
  EXPECT_EQ(outcome.err, unreadable());
  EXPECT_EQ(storeText(), "[{]");
}

TEST_F(SavePreset, KeepsTheBasesMenu) {
  base();
  EXPECT_EQ(
      presets({"save", "  My GT7\t"}),
      (Outcome{ExitStatus::done,
               "Saved preset \"My GT7\" (16 values)\nYour presets are in " + storePath() + "\n",
               ""}));
  EXPECT_EQ(withoutIDs(storeText()),
            "[\n"
            "  {\n"
            "    \"game\" : \"Custom\",\n"
            "    \"id\" : \"ID\",\n"
            "    \"isBuiltIn\" : false,\n"
            "    \"name\" : \"My GT7\",\n"
            "    \"notes\" : \"\",\n"
            "    \"source\" : \"\",\n"
            "    \"values\" : {\n"
            "      \"ACP\" : 1,\n"
            "      \"BLI\" : 101,\n"
            "      \"DPR\" : 50,\n"
            "      \"FEI\" : 100,\n"
            "      \"FF\" : 65,\n"
            "      \"FFS\" : 1,\n"
            "      \"FOR\" : 100,\n"
            "      \"FUL\" : 0,\n"
            "      \"INT\" : 11,\n"
            "      \"NDP\" : 25,\n"
            "      \"NFR\" : 10,\n"
            "      \"NIN\" : 5,\n"
            "      \"SEN\" : 900,\n"
            "      \"SHO\" : 100,\n"
            "      \"SPR\" : 100,\n"
            "      \"brF\" : 50\n"
            "    }\n"
            "  }\n"
            "]");
  EXPECT_EQ(transcript(), (Lines{"open", "> ff 03 02 +61", "close"}));
}

TEST_F(SavePreset, AddsItAfterTheOthers) {
  base();
  store_.save({ownPreset(firstID, "First")});
  EXPECT_EQ(run("presets save Second").status, ExitStatus::done);
  TuningPreset saved = store_.read().at(1);
  EXPECT_EQ(storeText(), encodePresets({ownPreset(firstID, "First"), saved}));
  saved.id = UUID::parse(secondID).value();
  EXPECT_EQ(saved, ownPreset(secondID, "Second", menuValues));
}

TEST_F(SavePreset, GivesOneDocument) {
  base();
  const Outcome outcome = presets({"--json", "save", "Grün"});
  EXPECT_EQ(outcome, (Outcome{ExitStatus::done, presetsDocument(store_.read()), ""}));
  EXPECT_EQ(store_.read().at(0).name, "Grün");
}

TEST_F(SavePreset, WhatItSavedCanBeApplied) {
  base().withBase(
      [](SimulatedBase& simulated) { simulated.menu().put(TuningParameter::sensitivity, 0); });
  EXPECT_EQ(run("presets save Mine").status, ExitStatus::done);
  const Outcome outcome = run("presets apply Mine");
  EXPECT_EQ(outcome.status, ExitStatus::done);
  EXPECT_EQ(outcome.out.substr(0, outcome.out.find('\n')), "SEN  AUT (250 ms)");
}

TEST_F(SavePreset, HoldsWhatTheProductHas) {
  attach(0x0001);
  EXPECT_EQ(run("presets save Mine").out.substr(0, 31), "Saved preset \"Mine\" (8 values)\n");
}

TEST_F(SavePreset, ARepeatedNameIsSavedAndToldOf) {
  base();
  for (const auto& name : {std::string("Mine"), factoryName()}) {
    store_.save({ownPreset(firstID, "Mine")});
    const Outcome outcome = presets({"save", name});
    const TuningPreset saved = store_.read().at(1);
    EXPECT_EQ(outcome.status, ExitStatus::done);
    EXPECT_EQ(outcome.err, "There is now more than one preset \"" + name +
                               "\". This one answers to its id: " + saved.id.text() + "\n");
    EXPECT_EQ(presets({"show", name}).status, ExitStatus::wrongUsage);
    EXPECT_EQ(presets({"show", saved.id.text(), "--json"}).out, presetsDocument({saved}));
  }
}

TEST_F(SavePreset, ReplacesOnesOwnOfThatNameWhenAskedTo) {
  base();
  const TuningPreset other = ownPreset(secondID, "mine");
  store_.save({ownPreset(firstID, "Mine"), other});
  const Outcome outcome = presets({"save", "--replace", "Mine"});
  EXPECT_EQ(outcome.status, ExitStatus::done);
  EXPECT_EQ(outcome.err, "");
  const auto stored = store_.read();
  ASSERT_EQ(stored.size(), 2U);
  EXPECT_EQ(stored[0].id.text(), firstID);
  EXPECT_EQ(stored[0].values.at("FF"), 65);
  EXPECT_EQ(stored[1], other);
}

TEST_F(SavePreset, TakesGameAndNotes) {
  base();
  presets({"save", "Mine", "--game", "GT7", "--notes", "Max Torque 5"});
  const auto saved = store_.read();
  ASSERT_EQ(saved.size(), 1U);
  EXPECT_EQ(saved[0].game, "GT7");
  EXPECT_EQ(saved[0].notes, "Max Torque 5");
  EXPECT_EQ(saved[0].source, "");
}

TEST_F(SavePreset, ReplacingKeepsTheTextsThatAreNotGiven) {
  base();
  TuningPreset before = ownPreset(firstID, "Mine", {{"XYZ", 1}});
  before.game = "GT7";
  before.source = "me";
  before.notes = "old";
  store_.save({before});
  presets({"save", "--replace", "Mine", "--notes", "new"});
  TuningPreset after = store_.read().at(0);
  EXPECT_EQ(after.values.at("FF"), 65);
  EXPECT_EQ(after.values.count("XYZ"), 0U);
  after.values = before.values;
  before.notes = "new";
  EXPECT_EQ(after, before);
}

TEST_F(SavePreset, ReplacingOneWithABuiltInsNameIsNoNews) {
  base();
  store_.save({ownPreset(firstID, factoryName())});
  const Outcome outcome = presets({"save", "--replace", factoryName()});
  EXPECT_EQ(outcome.status, ExitStatus::done);
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(store_.read().at(0).values.at("FF"), 65);
}

TEST_F(SavePreset, WithNothingToReplaceItIsAdded) {
  base();
  EXPECT_EQ(presets({"save", "--replace", factoryName()}).status, ExitStatus::done);
  EXPECT_EQ(store_.read().size(), 1U);
}

TEST_F(SavePreset, OfSeveralToReplaceNoneIsChosen) {
  base();
  const std::vector<TuningPreset> before{ownPreset(firstID, "Mine"), ownPreset(secondID, "Mine")};
  store_.save(before);
  EXPECT_EQ(presets({"save", "--replace", "Mine"}),
            (Outcome{ExitStatus::wrongUsage, "",
                     std::string("Several presets answer to \"Mine\". Name one by:\n  ") + firstID +
                         "  Mine\n  " + secondID + "  Mine\n"}));
  EXPECT_EQ(store_.read(), before);
}

TEST_F(SavePreset, ANameThatIsNoneTouchesNothing) {
  base();
  for (const std::string name : {"", " \t", "\u00A0"}) {
    EXPECT_EQ(presets({"save", name}),
              (Outcome{ExitStatus::wrongUsage, "", "The preset needs a name\n"}));
  }
  EXPECT_EQ(presets({"save", "GT\xFF", "--json"}),
            (Outcome{ExitStatus::wrongUsage,
                     errorDocument("wrongUsage", "The preset's name is not UTF-8"),
                     "The preset's name is not UTF-8\n"}));
  EXPECT_EQ(transcript(), Lines{});
  EXPECT_EQ(directory_.names(), std::set<std::string>{});
}

TEST_F(SavePreset, ABaseThatDoesNotAnswerLeavesTheStoreAlone) {
  change([](SimulatedBehaviour& behaviour) { behaviour.silent = true; });
  EXPECT_EQ(run("presets save Mine --json"),
            (Outcome{ExitStatus::failed, errorDocument("timeout", timeoutText),
                     std::string(timeoutText) + "\n"}));
  EXPECT_EQ(directory_.names(), std::set<std::string>{});
}

TEST_F(SavePreset, KeepsAStoreThatCannotBeRead) {
  base();
  damageStore();
  const std::string warning = unreadable();
  const Outcome outcome = run("presets save Mine");
  EXPECT_EQ(outcome.status, ExitStatus::done);
  EXPECT_EQ(outcome.err, warning + kept());
  EXPECT_EQ(store_.read().size(), 1U);
}

TEST_F(SavePreset, AStoreThatCannotBeWrittenIsAFailure) {
  base();
  putFile(directory_ / "data", "");  // a file in place of the store's directory
  const std::string message = (directory_ / "data").string() + ": Not a directory";
  EXPECT_EQ(run("presets save Mine"), (Outcome{ExitStatus::failed, "", message + "\n"}));
  EXPECT_EQ(run("presets save Mine --json"),
            (Outcome{ExitStatus::failed, errorDocument("fileFailed", message), message + "\n"}));
}

}  // namespace
}  // namespace quorvane
