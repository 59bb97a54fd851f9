#include "doctor/preset_check.h"

#include <gtest/gtest.h>

#include "tests/support/ordinary_user.h"
#include "tests/support/temporary_directory.h"

namespace quorvane {
namespace {

TEST(PresetCheck, AFileThatIsNotThereYetIsFine) {
  const TemporaryDirectory directory;
  const PresetFacts facts = examinePresets(directory / "Quorvane/presets.json");
  EXPECT_TRUE(facts.isMissing);
  EXPECT_EQ(judgePresets(facts).outcome, CheckOutcome::passed);
  EXPECT_EQ(judgePresets(facts).finding, "none saved yet");
  EXPECT_TRUE(directory.names().empty());
}

TEST(PresetCheck, CountsThePresets) {
  const TemporaryDirectory directory;
  putFile(directory / "presets.json", "[]");
  const PresetFacts facts = examinePresets(directory / "presets.json");
  EXPECT_FALSE(facts.isMissing);
  EXPECT_EQ(judgePresets(facts).finding, "0 presets in " + (directory / "presets.json").string());
}

TEST(PresetCheck, AUserWithoutAHomeIsToldSo) {
  const Verdict verdict = judgePresets(examinePresets(std::nullopt));
  EXPECT_EQ(verdict.outcome, CheckOutcome::failed);
  EXPECT_EQ(verdict.finding, "you have no home directory to keep presets in");
  EXPECT_EQ(verdict.nextStep, "Set HOME, or XDG_DATA_HOME, to a directory of yours.");
}

TEST(PresetCheck, AFileSystemThatDoesNotAnswerIsNamed) {
  const Verdict verdict = judgePresets(presetsOutOfTime("/net/presets.json"));
  EXPECT_EQ(verdict.outcome, CheckOutcome::failed);
  EXPECT_EQ(verdict.finding, "/net/presets.json: the file system it is on does not answer");
  EXPECT_FALSE(verdict.nextStep.empty());
}

TEST(PresetCheck, WhatIsWrongNamesTheFile) {
  const TemporaryDirectory directory;
  const auto file = directory / "presets.json";
  putFile(file, R"([{"name" : 1}])");
  EXPECT_EQ(examinePresets(file).contentFailure.substr(0, file.string().size() + 2),
            file.string() + ": ");
  putFile(file, "[");
  const Verdict verdict = judgePresets(examinePresets(file));
  EXPECT_EQ(verdict.outcome, CheckOutcome::failed);
  EXPECT_EQ(verdict.finding.substr(0, file.string().size() + 20),
            file.string() + ": Not valid JSON at ");
}

TEST(PresetCheck, AHomeThatMayNotBeWrittenIsFoundBeforeAnythingIsLost) {
  const TemporaryDirectory directory;
  const auto home = directory / "home";
  std::filesystem::create_directory(home);
  std::filesystem::permissions(home, std::filesystem::perms(0555));
  const AsOrdinaryUser ordinary;
  const Verdict verdict = judgePresets(examinePresets(home / "share/Quorvane/presets.json"));
  EXPECT_EQ(verdict.outcome, CheckOutcome::failed);
  EXPECT_EQ(verdict.finding, "presets cannot be saved: " + home.string() + ": Permission denied");
}

TEST(PresetCheck, FindsTheFirstThingThatIsInTheWay) {
  const std::filesystem::path file("/p.json");
  const std::vector<std::pair<PresetFacts, std::string>> cases{
      {{file, false, 0, "/p.json: Input/output error", "", ""}, "/p.json: Input/output error"},
      {{file, false, 0, "", "/p.json: Not valid JSON", "/: Read-only file system"},
       "/p.json: Not valid JSON"},
      {{file, false, 1, "", "", "/: Read-only file system"},
       "presets cannot be saved: /: Read-only file system"},
      {{file, true, 0, "", "", "/: Read-only file system"},
       "presets cannot be saved: /: Read-only file system"},
  };
  for (const auto& [facts, finding] : cases) {
    const Verdict verdict = judgePresets(facts);
    EXPECT_EQ(verdict.outcome, CheckOutcome::failed);
    EXPECT_EQ(verdict.finding, finding);
    EXPECT_FALSE(verdict.nextStep.empty());
  }
}

}  // namespace
}  // namespace quorvane
