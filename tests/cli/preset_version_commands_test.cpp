#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <vector>

#include "tests/cli/preset_fixture.h"

namespace quorvane {
namespace {

class PresetVersionCommands : public PresetTest {
 protected:
  // Three changes: version 1 has Rain, version 2 Rain and Spa, and the store Spa.
  void makeVersions() const {
    const TuningPreset rain = ownPreset(firstID, "Rain");
    const TuningPreset spa = ownPreset(secondID, "Spa");
    store_.save({rain});
    store_.save({rain, spa});
    store_.save({spa});
  }

  void putVersion(std::string_view name, std::string_view content) const {
    putFile(state_.path() / "preset-versions" / name, content);
  }
};

// The text with every time replaced by "TIME".
Outcome withoutTimes(const Outcome& outcome) {
  static const std::regex time("[0-9]{4}-[0-9]{2}-[0-9]{2}[ T][0-9]{2}:[0-9]{2}:[0-9]{2}Z?");
  return {outcome.status, std::regex_replace(outcome.out, time, "TIME"),
          std::regex_replace(outcome.err, time, "TIME")};
}

const char* const listStart =
    "Your presets as they were before each change, and what changed then\n";
const char* const listEnd = "To go back to one: quorvanectl presets restore NUMBER --yes\n";

TEST_F(PresetVersionCommands, ListTheLatestFirst) {
  EXPECT_EQ(presets({"versions"}),
            (Outcome{ExitStatus::done, "There are no former versions of your presets yet\n", ""}));
  makeVersions();
  EXPECT_EQ(withoutTimes(presets({"versions"})),
            (Outcome{ExitStatus::done,
                     listStart +
                         std::string("       2  TIME    2 presets  deleted \"Rain\"\n"
                                     "       1  TIME     1 preset  added \"Spa\"\n") +
                         listEnd,
                     ""}));
  const Json document{
      {"versions",
       {{{"number", 2}, {"replacedAt", "TIME"}, {"presetCount", 2}, {"change", "deleted \"Rain\""}},
        {{"number", 1}, {"replacedAt", "TIME"}, {"presetCount", 1}, {"change", "added \"Spa\""}}}}};
  EXPECT_EQ(withoutTimes(presets({"versions", "--json"})),
            (Outcome{ExitStatus::done, documentText(document) + "\n", ""}));
}

TEST_F(PresetVersionCommands, AStrangersFileIsListedAsOneThatCannotBeRead) {
  makeVersions();
  putVersion("000007-20260301T093000Z.json", "[{]");
  putVersion("stranger", "[{]");
  const std::string out = withoutTimes(presets({"versions"})).out;
  EXPECT_EQ(out, listStart +
                     std::string("       7  TIME            -  cannot be read\n"
                                 "       2  TIME    2 presets  not known\n"
                                 "       1  TIME     1 preset  added \"Spa\"\n") +
                     listEnd);
  const Json first = Json::parse(presets({"versions", "--json"}).out)["versions"][0];
  EXPECT_TRUE(first["presetCount"].is_null() && first["change"].is_null()) << first;
  const Outcome outcome = presets({"restore", "7", "--yes"});
  EXPECT_EQ(outcome.status, ExitStatus::failed);
  EXPECT_NE(outcome.err.find("Not valid JSON"), std::string::npos) << outcome;
}

TEST_F(PresetVersionCommands, GoBackToOneAndKeepWhatThatReplaced) {
  makeVersions();
  EXPECT_EQ(
      presets({"restore", "1", "--yes"}),
      (Outcome{ExitStatus::done, "Your presets are those of version 1 again (1 preset)\n", ""}));
  EXPECT_EQ(store_.read().at(0).id.text(), firstID);
  EXPECT_EQ(presets({"restore", "3", "--yes", "--json"}),
            (Outcome{ExitStatus::done, presetsDocument({ownPreset(secondID, "Spa")}), ""}));
  EXPECT_EQ(store_.formerVersions().size(), 4U);
}

TEST_F(PresetVersionCommands, ARefusalChangesNothing) {
  makeVersions();
  EXPECT_EQ(
      withoutTimes(presets({"restore", "2"})),
      (Outcome{ExitStatus::wrongUsage, "",
               "This replaces all of your presets by version 2 of TIME (2 presets). The present "
               "ones are kept as a version. Run it again with --yes\n"}));
  for (const std::string word : {"0", "3", "x", "", "1.0", "99999999999999999999"}) {
    EXPECT_EQ(presets({"restore", word, "--yes"}),
              (Outcome{ExitStatus::wrongUsage, "",
                       "There is no version \"" + word +
                           "\" of your presets. \"quorvanectl presets versions\" lists them\n"}));
  }
  EXPECT_EQ(store_.read().size(), 1U);
  EXPECT_EQ(store_.formerVersions().size(), 2U);
}

TEST_F(PresetVersionCommands, BringBackThePresetsOfADamagedStore) {
  makeVersions();
  damageStore();
  EXPECT_EQ(presets({"restore", "2", "--yes"}).status, ExitStatus::done);
  EXPECT_EQ(store_.read().size(), 2U);
  EXPECT_EQ(keptFiles().size(), 1U);
}

TEST_F(PresetVersionCommands, AVersionThatCannotBeKeptIsToldOnce) {
  store_.save({ownPreset(firstID, "Rain")});
  putFile(state_ / "preset-versions", "in the way");
  EXPECT_EQ(presets({"edit", "Rain", "--name", "Spa"}),
            (Outcome{ExitStatus::done, "Edited preset \"Spa\", before \"Rain\"\n",
                     "The presets before this change were not kept as a version: " +
                         (state_ / "preset-versions").string() + ": Not a directory\n"}));
  EXPECT_EQ(store_.read().at(0).name, "Spa");
}

}  // namespace
}  // namespace quorvane
