#include "cli/completion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

#include "cli/history_text.h"
#include "hid/device_info.h"
#include "tests/cli/preset_fixture.h"

namespace quorvane {
namespace {

using Words = std::vector<std::string>;

class Completion : public PresetTest {
 protected:
  // The completions of the last word, without their descriptions.
  Words offered(Words words) {
    Words result;
    for (const std::string& line : lines(std::move(words))) {
      result.push_back(line.starts_with('\t') ? "<files>" : line.substr(0, line.find('\t')));
    }
    return result;
  }

  Words lines(Words words) {
    words.insert(words.begin(), completionWord);
    const Outcome outcome = run(words);
    EXPECT_EQ(outcome.status, ExitStatus::done);
    Words result;
    std::size_t end = 0;
    for (std::size_t begin = 0; begin < outcome.out.size(); begin = end + 1) {
      end = outcome.out.find('\n', begin);
      result.push_back(outcome.out.substr(begin, end - begin));
    }
    return result;
  }
};

TEST_F(Completion, OffersWhatFitsThePlace) {
  struct Case {
    Words words;
    Words offered;
  };
  const std::vector<Case> cases{
      {{"re"}, {"read", "redo"}},
      {{"RE"}, {"read", "redo"}},
      {{"mo"}, {"mode", "monitor"}},
      {{"nothing"}, {}},
      {{"complete"}, {}},
      {{"presets", "s"}, {"show", "save", "share"}},
      {{"presets", "nothing", ""},
       {"list", "show", "apply", "save", "delete", "edit", "duplicate", "move", "versions",
        "restore", "import", "export", "share"}},
      {{"presets", "move", "a", "--b"}, {"--before"}},
      {{"presets", "edit", "a", "--n"}, {"--name", "--notes"}},
      {{"presets", "list", "--game", "a"}, {"Any"}},
      {{"presets", "save", "a", "--game", "gran"}, {"Gran Turismo 7"}},
      {{"presets", "list", "--search", ""}, {}},
      {{"read", ""}, {}},
      {{"nothing", "re"}, {"read", "redo"}},

      {{"--js"}, {"--json"}},
      {{"read", "--js"}, {"--json"}},
      {{"presets", "share", "--p"}, {"--preset"}},
      {{"factory-reset", "--y"}, {"--yes"}},
      {{"udev-rule", "--i"}, {"--install"}},
      {{"udev-rule", "--rem"}, {"--remove"}},
      {{"read", "--he"}, {"--help"}},
      {{"read", "--vers"}, {}},
      {{"--vers"}, {"--version"}},
      {{"--", "--js"}, {}},
      {{"--unknown=", "fac"}, {"factory-reset"}},
      {{"--unknown=a"}, {}},

      {{"--layout", ""}, {"sdk", "linux"}},
      {{"--layout="}, {"--layout=sdk", "--layout=linux"}},
      {{"--layout=l"}, {"--layout=linux"}},
      {{"--layout", "sdk", "fac"}, {"factory-reset"}},
      {{"--layout=sdk", "fac"}, {"factory-reset"}},
      {{"--json", "fac"}, {"factory-reset"}},
      {{"--simulate", "fac"}, {"factory-reset"}},
      {{"--simulate=00"},
       {"--simulate=0001", "--simulate=0004", "--simulate=0005", "--simulate=0006",
        "--simulate=0007", "--simulate=0020"}},
      {{"--simulate-state", ""}, {"<files>"}},
      {{"--report-id", ""}, {}},

      {{"mode", ""}, {"standard", "advanced"}},
      {{"mode", "advanced", ""}, {}},
      {{"select", ""}, {"1", "2", "3", "4", "5"}},
      {{"select", "--json", "3"}, {"3"}},
      {{"rotation", ""}, {}},

      {{"explain", "n"}, {"NDP", "NFR", "NIN"}},
      {{"explain", "SL"}, {"SLOT"}},
      {{"explain", "NDP", ""}, {}},

      {{"diff", "b"}, {"base", "<files>"}},
      {{"diff", "history:"}, {"<files>"}},
      {{"diff", "base", "x"}, {"<files>"}},
      {{"diff", "a", "b", ""}, {}},

      {{"set", "s"}, {"SEN=", "SHO=", "SPR="}},
      {{"set", "SEN=900", "spr=10", "s"}, {"SHO="}},
      {{"set", "SEN="}, {"SEN=AUTO"}},
      {{"set", "BLI=o"}, {"BLI=OFF"}},
      {{"set", "ffs="}, {"ffs=LIN", "ffs=PEA"}},
      {{"set", "ACP="}, {"ACP=CbP", "ACP=CH", "ACP=Bt", "ACP=AnA"}},
      {{"set", "DRI=-"}, {"DRI=-5", "DRI=-4", "DRI=-3", "DRI=-2", "DRI=-1"}},
      {{"set", "FOR=1"}, {"FOR=10", "FOR=100", "FOR=110", "FOR=120"}},
      {{"set", "INT=2"}, {"INT=2", "INT=20"}},
      {{"set", "FF="}, {}},
      {{"set", "XYZ="}, {}},
      {{"set", "SLO"}, {}},

      {{"presets", "import", ""}, {"<files>"}},
      {{"presets", "import", "a", "b"}, {"<files>"}},
      {{"presets", "export", ""}, {"<files>"}},
      {{"presets", "save", ""}, {}},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(offered(c.words), c.offered) << testing::PrintToString(c.words);
  }
}

TEST_F(Completion, OffersTheMenusBeforeTheLastWrites) {
  base();
  for (int value = 1; value <= 22; ++value) run("set FF=" + std::to_string(value));
  run("rotation 540");  // reads no menu
  Words wanted;
  const auto records =
      history_.read(HIDEnumerator::devices(Fanatec::vendorID, backend_).front()).records;
  ASSERT_EQ(records.size(), 23U);
  for (auto record = std::next(records.rbegin()); wanted.size() < 20; ++record) {
    wanted.push_back("history:" + shortID(record->id));
  }
  wanted.push_back("<files>");
  EXPECT_EQ(offered({"diff", "history:"}), wanted);
  EXPECT_EQ(offered({"diff", "hist"}), wanted);
  EXPECT_EQ(offered({"diff", "base", "hi"}), wanted);
}

TEST_F(Completion, EveryCommandIsOffered) {
  const Words all = offered({""});
  for (const char* const command :
       {"devices", "read", "set", "select", "mode", "history", "undo", "redo", "rotation", "raw",
        "factory-reset", "usb-reset", "presets", "monitor", "udev-rule", "explain", "diff"}) {
    EXPECT_EQ(std::count(all.begin(), all.end(), command), 1) << command;
  }
  EXPECT_EQ(offered({}), all);
}

TEST_F(Completion, TellsWhatCandidatesMean) {
  EXPECT_EQ(lines({"sele"}), Words{"select\tMake another tuning set active"});
  EXPECT_EQ(lines({"set", "acp=cb"}), Words{"acp=CbP\tCbP (clutch bite point)"});
  EXPECT_EQ(lines({"set", "FFS=L"}), Words{"FFS=LIN\tForce feedback scaling"});
  EXPECT_EQ(lines({"set", "SEN"}), Words{"SEN=\tSensitivity (steering angle)"});
  EXPECT_EQ(lines({"--simulate=183b"}), Words());
  EXPECT_EQ(lines({"--simulate=0006"}), Words{"--simulate=0006\tPodium Wheel Base DD1"});
}

TEST_F(Completion, NamesTheAttachedBases) {
  EXPECT_EQ(offered({"--device", ""}), Words());
  base();
  EXPECT_EQ(lines({"--device", ""}), Words{std::string(simulatedID) + "\t" + simulatedName});
  EXPECT_EQ(offered({"read", "--device=0EB"}), Words{std::string("--device=") + simulatedID});
}

TEST_F(Completion, NamesPresets) {
  store_.save({ownPreset(firstID, "My GT7"), ownPreset(secondID, "--fast"),
               ownPreset(thirdID, "two\nlines")});
  EXPECT_EQ(lines({"presets", "show", "my"}), Words{"My GT7\tCustom"});
  EXPECT_EQ(offered({"presets", "delete", ""}), (Words{"My GT7", "mine:--fast", thirdID}));
  EXPECT_EQ(lines({"presets", "apply", thirdID}), Words{std::string(thirdID) + "\ttwo lines"});
  EXPECT_EQ(offered({"presets", "apply", "fanatec fac"}), Words{factoryName()});
  EXPECT_EQ(offered({"presets", "apply", "My GT7", ""}), Words());
  EXPECT_EQ(offered({"presets", "share", "--preset", "My"}), Words{"My GT7"});
  EXPECT_EQ(offered({"presets", "export", "all.json", "My GT7", "my"}), Words{"My GT7"});
}

TEST_F(Completion, NamesOnesOwnPresetsToEditAndMove) {
  store_.save({ownPreset(firstID, "My GT7"), ownPreset(secondID, "Rain")});
  EXPECT_EQ(offered({"presets", "edit", ""}), (Words{"My GT7", "Rain"}));
  EXPECT_EQ(offered({"presets", "move", "Rain", "--before", ""}), (Words{"My GT7", "Rain"}));
  EXPECT_EQ(offered({"presets", "duplicate", "fanatec fac"}), Words{factoryName()});
  EXPECT_EQ(lines({"presets", "list", "--game="}),
            (Words{"--game=Any\t", "--game=Gran Turismo 7\t", "--game=Custom\t"}));
}

TEST_F(Completion, APresetWhoseNameAnotherHasIsOfferedByAWordOfItsOwn) {
  const std::string ofMine = "mine:" + factoryName();
  store_.save({ownPreset(firstID, factoryName()), ownPreset(secondID, "My GT7"),
               ownPreset(thirdID, "My GT7")});
  EXPECT_EQ(offered({"presets", "show", "fanatec fac"}), Words());
  EXPECT_EQ(offered({"presets", "show", "builtin:fanatec fac"}), Words{"builtin:" + factoryName()});
  EXPECT_EQ(lines({"presets", "show", "mine:"}), Words{ofMine + "\t" + factoryName()});
  EXPECT_EQ(offered({"presets", "delete", ""}), (Words{ofMine, secondID, thirdID}));
}

TEST_F(Completion, BuiltInAndMineTellPresetsApartAlsoWhenTheyNeedNot) {
  store_.save({ownPreset(firstID, "My GT7"), ownPreset(secondID, "Spa")});
  EXPECT_EQ(offered({"presets", "apply", "m"}), Words{"My GT7"});
  EXPECT_EQ(offered({"presets", "apply", "MINE:m"}), Words{"mine:My GT7"});
  EXPECT_EQ(offered({"presets", "apply", "mine:f"}), Words());
  EXPECT_EQ(offered({"presets", "apply", "builtin:fanatec fac"}),
            Words{"builtin:" + factoryName()});
  EXPECT_EQ(offered({"presets", "apply", std::string(firstID)}), Words{firstID});
}

TEST_F(Completion, NamesThePresetsOfSimulatedBases) {
  store_.save({ownPreset(firstID, "My GT7")});
  simulatedStore_.save({ownPreset(secondID, "Mine")});
  EXPECT_EQ(offered({"presets", "show", "m"}), Words{"My GT7"});
  EXPECT_EQ(offered({"--simulate", "presets", "show", "m"}), Words{"Mine"});
  EXPECT_EQ(offered({"presets", "delete", "--simulate=DD1", ""}), Words{"Mine"});
  EXPECT_EQ(offered({"presets", "show", "--", "--simulate", "m"}), Words());
  EXPECT_EQ(offered({"presets", "export", "--", "--simulate", "m"}), Words{"My GT7"});
}

TEST_F(Completion, ADamagedStoreLeavesTheBuiltInPresets) {
  damageStore();
  EXPECT_EQ(offered({"presets", "apply", "fanatec fac"}), Words{factoryName()});
  EXPECT_EQ(offered({"presets", "delete", ""}), Words());
}

}  // namespace
}  // namespace quorvane
