#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "tests/cli/preset_fixture.h"
#include "tests/support/child_process.h"

namespace quorvane {
namespace {

using ListPresets = PresetTest;
using ShowPreset = PresetTest;
using DeletePreset = PresetTest;

const char* const builtInText =
    "Built in\n"
    "  Fanatec factory defaults                 Any             14 values  Fanatec help center, "
    "tuning menu article\n"
    "  Fanatec recommended, Gran Turismo 7      Gran Turismo 7  12 values  Fanatec forum thread\n"
    "  Redline Lab 2025, Gran Turismo 7 (8 Nm)  Gran Turismo 7  11 values  redlinelab.example\n"
    "  Gearwerk 2025, Gran Turismo 7 (8 Nm)     Gran Turismo 7  13 values  gearwerk.example, March "
    "2025\n"
    "\n"
    "Your own\n";

std::vector<TuningPreset> withBuiltIn(const std::vector<TuningPreset>& own) {
  std::vector<TuningPreset> all = TuningPreset::builtIn();
  all.insert(all.end(), own.begin(), own.end());
  return all;
}

TEST_F(ListPresets, ShowsTheBuiltInOnesAndTheUsersOwn) {
  store_.save({ownPreset(firstID, "My GT7", {{"FF", 80}, {"SEN", 900}}),
               ownPreset(secondID, "Rain", {{"FF", 60}})});
  EXPECT_EQ(run("presets list"),
            (Outcome{ExitStatus::done,
                     std::string(builtInText) + "  My GT7  Custom   2 values\n"
                                                "  Rain    Custom    1 value\n",
                     ""}));
}

TEST_F(ListPresets, SaysHowToGetAFirstOne) {
  const std::string hint =
      "  None yet. Save the base's menu as your first: quorvanectl presets save NAME\n";
  const Outcome wanted{ExitStatus::done, builtInText + hint, ""};
  EXPECT_EQ(run("presets list"), wanted);
  store_.save({});
  EXPECT_EQ(run("presets list"), wanted);
}

TEST_F(ListPresets, GivesOneDocument) {
  const std::vector<TuningPreset> own{ownPreset(firstID, "A/B \"Grün\"", {{"brF", 50}, {"FF", 80}}),
                                      ownPreset(secondID, "Rain")};
  EXPECT_EQ(run("presets list --json"),
            (Outcome{ExitStatus::done, presetsDocument(TuningPreset::builtIn()), ""}));
  store_.save(own);
  EXPECT_EQ(run("presets list --json"),
            (Outcome{ExitStatus::done, presetsDocument(withBuiltIn(own)), ""}));
}

TEST_F(ListPresets, ThePresetsInADocumentAreThoseOfTheFile) {
  store_.save({ownPreset(firstID, "Grün", {{"brF", 50}, {"FF", 80}})});
  const Json own = Json::parse(run("presets list --json").out)["presets"][4];
  EXPECT_EQ(documentText(own),
            "{\n"
            "  \"game\": \"Custom\",\n"
            "  \"id\": \"11111111-2222-3333-4444-AAAAAAAAAAAA\",\n"
            "  \"isBuiltIn\": false,\n"
            "  \"name\": \"Grün\",\n"
            "  \"notes\": \"\",\n"
            "  \"source\": \"\",\n"
            "  \"values\": {\n"
            "    \"FF\": 80,\n"
            "    \"brF\": 50\n"
            "  }\n"
            "}");
}

TEST_F(ListPresets, NeedsNoBaseAndWritesNothing) {
  base();
  run("presets list");
  EXPECT_EQ(transcript(), Lines{});
  EXPECT_EQ(directory_.names(), std::set<std::string>{});
}

TEST_F(ListPresets, GoesOnWithoutAStoreThatCannotBeRead) {
  const std::vector<std::pair<std::string, std::string>> cases{
      {"", "Not valid JSON at line 1, column "},
      {"{}", "A list of presets is not an array but object"},
      {"[{}]", "Preset 1: \"id\" is missing"},
      {std::string("\x7f"
                   "ELF\0\xFF\n",
                   7),
       "Not valid JSON at line 1, column "},
      {std::string(100000, '['), "Not a settings file: nested deeper than 64"},
  };
  for (const auto& [content, reason] : cases) {
    damageStore(content);
    const std::string start = "Your own presets cannot be read: " + storePath() + ": " + reason;
    EXPECT_EQ(unreadable().substr(0, start.size()), start);
    EXPECT_EQ(run("presets list"),
              (Outcome{ExitStatus::done, std::string(builtInText) + "  None that can be read.\n",
                       unreadable()}));
    EXPECT_EQ(run("presets list --json"),
              (Outcome{ExitStatus::done, presetsDocument(TuningPreset::builtIn()), unreadable()}));
    EXPECT_EQ(storeText(), content);
  }
}

TEST_F(ListPresets, AStoreThatIsNoFileIsToldByOneLine) {
  const std::vector<std::pair<std::function<void(const char*)>, std::string>> cases{
      {[](const char* path) { EXPECT_EQ(::mkdir(path, 0777), 0); }, "Is a directory"},
      {[](const char* path) { EXPECT_EQ(::mkfifo(path, 0666), 0); }, "Not a regular file"},
      {[](const char* path) { EXPECT_EQ(::symlink(path, path), 0); },
       "Too many levels of symbolic links"},
  };
  std::filesystem::create_directories(store_.fileURL().parent_path());
  for (const auto& [make, reason] : cases) {
    make(storePath().c_str());
    EXPECT_EQ(run("presets list").err,
              "Your own presets cannot be read: " + storePath() + ": " + reason + "\n");
    std::filesystem::remove(store_.fileURL());
  }
}

TEST_F(ListPresets, AStoreThatThisUserMayNotReadGivesNoHintAboutDevices) {
  store_.save({ownPreset(firstID, "Mine")});
  std::filesystem::permissions(store_.fileURL(), std::filesystem::perms::none);
  EXPECT_EQ(inChildProcess([this] {
              becomeOrdinaryUser();
              return run("presets list").err;
            }),
            "Your own presets cannot be read: " + storePath() + ": Permission denied\n");
}

TEST_F(ShowPreset, ShowsAllThatItHolds) {
  EXPECT_EQ(presets({"show", "fanatec factory defaults"}),
            (Outcome{ExitStatus::done,
                     "Fanatec factory defaults\n"
                     "  Game    Any\n"
                     "  Source  Fanatec help center, tuning menu article\n"
                     "  Notes   What a CSL DD or GT DD Pro ships with.\n"
                     "  Id      (built in)\n"
                     "\n"
                     "  SEN  AUTO                     Sensitivity (steering angle)\n"
                     "  FF   100 %                    Force feedback strength\n"
                     "  SHO  100 %                    Wheel vibration motor\n"
                     "  BLI  OFF                      Brake level indicator\n"
                     "  FFS  PEA                      Force feedback scaling\n"
                     "  FOR  100 %                    Force effect strength\n"
                     "  SPR  100 %                    Spring effect strength\n"
                     "  DPR  100 %                    Damper effect strength\n"
                     "  NDP  50 %                     Natural damper\n"
                     "  NFR  0 %                      Natural friction\n"
                     "  brF  50 %                     Brake force (load cell)\n"
                     "  FEI  100 %                    Force effect intensity\n"
                     "  INT  11                       FFB interpolation filter\n"
                     "  NIN  0 %                      Natural inertia\n",
                     ""}));
  store_.save({ownPreset(firstID, "Mine", {{"FF", 80}, {"XYZ", 1}})});
  EXPECT_EQ(run("presets show mine"),
            (Outcome{ExitStatus::done,
                     "Mine\n"
                     "  Game    Custom\n"
                     "  Source  none\n"
                     "  Notes   none\n"
                     "  Id      11111111-2222-3333-4444-AAAAAAAAAAAA\n"
                     "\n"
                     "  FF   80 %                     Force feedback strength\n"
                     "  XYZ  1                        (no setting of the menu)\n",
                     ""}));
}

TEST_F(ShowPreset, GivesOneDocument) {
  const TuningPreset own = ownPreset(firstID, "Mine", {{"FF", 80}, {"XYZ", 1}});
  store_.save({ownPreset(secondID, "Other"), own});
  EXPECT_EQ(presets({"--json", "show", "11111111-2222-3333-4444-aaaaaaaaaaaa"}),
            (Outcome{ExitStatus::done, presetsDocument({own}), ""}));
  EXPECT_EQ(presets({"show", factoryName(), "--json"}),
            (Outcome{ExitStatus::done, presetsDocument({TuningPreset::builtIn().front()}), ""}));
}

TEST_F(ShowPreset, GoesOnWithoutAStoreThatCannotBeRead) {
  damageStore();
  const Outcome outcome = presets({"show", factoryName()});
  EXPECT_EQ(outcome.status, ExitStatus::done);
  EXPECT_EQ(outcome.err, unreadable());
}

TEST_F(ShowPreset, APresetMayBeCalledAsACommandOrAnOptionIs) {
  const Lines names{"list", "show", "read", "presets", "-1", "--json", "-x", "--simulate", "++"};
  for (const std::string& name : names) {
    store_.save({ownPreset(firstID, name)});
    EXPECT_EQ(presets({"show", "--", name}).out.substr(0, name.size() + 1), name + "\n");
  }
  for (const char* const name : {"list", "show", "read", "presets", "-1"}) {
    store_.save({ownPreset(firstID, name)});
    EXPECT_EQ(presets({"show", name}).status, ExitStatus::done) << name;
  }
}

TEST_F(DeletePreset, TakesOneOutOfTheStore) {
  const TuningPreset first = ownPreset(firstID, "First", {{"FF", 80}});
  const TuningPreset second = ownPreset(secondID, "Second", {{"FF", 60}});
  const TuningPreset third = ownPreset(thirdID, "Third");
  store_.save({first, second, third});
  EXPECT_EQ(run("presets delete SECOND"),
            (Outcome{ExitStatus::done, "Deleted preset \"Second\"\n", ""}));
  EXPECT_EQ(storeText(), encodePresets({first, third}));
  EXPECT_EQ(run("presets --json delete 11111111-2222-3333-4444-aaaaaaaaaaaa"),
            (Outcome{ExitStatus::done, presetsDocument({first}), ""}));
  EXPECT_EQ(storeText(), encodePresets({third}));
  EXPECT_EQ(run("presets delete Third").status, ExitStatus::done);
  EXPECT_EQ(storeText(), "[]");
}

TEST_F(DeletePreset, LeavesTheBuiltInOnes) {
  store_.save({ownPreset(firstID, "Mine")});
  const std::string message = "\"Fanatec factory defaults\" is built in and cannot be deleted";
  EXPECT_EQ(presets({"delete", "FANATEC factory defaults"}),
            (Outcome{ExitStatus::wrongUsage, "", message + "\n"}));
  EXPECT_EQ(
      presets({"--json", "delete", "FANATEC factory defaults"}),
      (Outcome{ExitStatus::wrongUsage, errorDocument("wrongUsage", message), message + "\n"}));
  EXPECT_EQ(storeText(), encodePresets({ownPreset(firstID, "Mine")}));
}

TEST_F(DeletePreset, OfSeveralWithOneNameTheIdTellsWhich) {
  const TuningPreset first = ownPreset(firstID, "Mine", {{"FF", 80}});
  const TuningPreset second = ownPreset(secondID, "Mine", {{"FF", 60}});
  store_.save({first, second});
  EXPECT_EQ(run("presets delete mine"),
            (Outcome{ExitStatus::wrongUsage, "",
                     "Several presets answer to \"mine\". Name one by:\n"
                     "  11111111-2222-3333-4444-AAAAAAAAAAAA  Mine\n"
                     "  11111111-2222-3333-4444-BBBBBBBBBBBB  Mine\n"}));
  EXPECT_EQ(storeText(), encodePresets({first, second}));
  EXPECT_EQ(presets({"delete", firstID}).status, ExitStatus::done);
  EXPECT_EQ(storeText(), encodePresets({second}));
}

TEST_F(DeletePreset, RecordsOfOneIdAndNameGoOneByOne) {
  const TuningPreset first = ownPreset(firstID, "Spa", {{"FF", 1}});
  const TuningPreset second = ownPreset(firstID, "Spa", {{"FF", 2}});
  store_.save({first, second});
  EXPECT_EQ(presets({"delete", firstID}).status, ExitStatus::done);
  EXPECT_EQ(store_.read(), std::vector{second});
  EXPECT_EQ(presets({"delete", "Spa"}).status, ExitStatus::done);
  EXPECT_EQ(storeText(), "[]");
  store_.save({first, first});
  EXPECT_EQ(presets({"delete", firstID}).status, ExitStatus::done);
  EXPECT_EQ(store_.read(), std::vector{first});
}

TEST_F(ListPresets, SaysWhatToTypeWhereANameIsShared) {
  store_.save(
      {ownPreset(firstID, factoryName()), ownPreset(secondID, "Spa"), ownPreset(thirdID, "Spa")});
  const std::string out = presets({"list"}).out;
  const std::string wanted = "\nNames that several share; type\n  \"builtin:" + factoryName() +
                             "\"\n  \"mine:" + factoryName() + "\"\n  " + secondID + "  Spa\n  " +
                             thirdID + "  Spa\n";
  EXPECT_TRUE(out.ends_with(wanted)) << out;
}

TEST_F(DeletePreset, LeavesAStoreThatCannotBeRead) {
  damageStore();
  const std::string reason =
      unreadable().substr(std::string("Your own presets cannot be read: ").size());
  EXPECT_EQ(run("presets delete Mine"), (Outcome{ExitStatus::failed, "", reason}));
  EXPECT_EQ(storeText(), "[{]");
}

TEST_F(DeletePreset, AStoreThatCannotBeWrittenIsAFailure) {
  store_.save({ownPreset(firstID, "Mine")});
  std::filesystem::permissions(
      store_.fileURL(), std::filesystem::perms::others_read | std::filesystem::perms::owner_read);
  const std::string message = storePath() + ": Permission denied";
  const auto errorOf = [&](const char* line) {
    return inChildProcess([&] {
      becomeOrdinaryUser();
      const Outcome outcome = run(line);
      return std::to_string(static_cast<int>(outcome.status)) + outcome.out + outcome.err;
    });
  };
  EXPECT_EQ(errorOf("presets delete Mine"), "1" + message + "\n");
  EXPECT_EQ(errorOf("presets delete Mine --json"),
            "1" + errorDocument("fileFailed", message) + message + "\n");
  EXPECT_EQ(storeText(), encodePresets({ownPreset(firstID, "Mine")}));
}

}  // namespace
}  // namespace quorvane
