#include <gtest/gtest.h>

#include "tests/cli/preset_fixture.h"

namespace quorvane {
namespace {

using DryRun = PresetTest;

const Lines onlyRead{"open", "> ff 03 02 +61", "close"};

TEST_F(DryRun, PrintsWhatSetWouldWriteAndWritesNothing) {
  base();
  EXPECT_EQ(run("set FF=100 SHO=55 NDP-=5 SEN=AUTO BLI=OFF --dry-run"),
            (Outcome{ExitStatus::done,
                     "To set C (Custom), nothing written:\n"
                     "SEN  900 deg -> AUT\n"
                     "FF   65 % -> 100 % (stronger)\n"
                     "SHO  100 % -> 50 %\n"
                     "BLI  OFF (as it is)\n"
                     "NDP  25 % -> 20 %\n",
                     ""}));
  EXPECT_EQ(transcript(), onlyRead);
}

TEST_F(DryRun, NamesWhatCannotBeWritten) {
  base();
  EXPECT_EQ(run("set FF=120 DRI=1 NDP-=50 FFS=LIN --dry-run"),
            (Outcome{ExitStatus::failed,
                     "To set C (Custom), nothing written:\n"
                     "FF   not written: FF value 120 is outside 0...100\n"
                     "FFS  PEA -> LIN\n"
                     "DRI  not written: DRI is not available on " +
                         std::string(simulatedName) +
                         "\n"
                         "NDP  not written: NDP is 25 % now; 50 less would be outside 0...100\n",
                     "3 of 4 values cannot be written\n"}));
  EXPECT_EQ(transcript(), onlyRead);
}

TEST_F(DryRun, OfAPresetWritesNothing) {
  base();
  store_.save({ownPreset(firstID, "Mine", {{"FF", 70}, {"DRI", 1}})});
  EXPECT_EQ(
      run("presets apply Mine --dry-run"),
      (Outcome{ExitStatus::done, "To set C (Custom), nothing written:\nFF   65 % -> 70 %\n",
               "Not on the menu of " + std::string(simulatedName) + ", and left out: DRI\n"}));
  EXPECT_EQ(transcript(), onlyRead);
}

TEST_F(DryRun, GivesOneDocument) {
  base();
  const Json expected{{"plan",
                       {{{"parameter", "SEN"}, {"now", 900}, {"then", 0}, {"error", nullptr}},
                        {{"parameter", "FUL"}, {"now", 0}, {"then", 30}, {"error", nullptr}}}},
                      {"stronger", "FUL"}};
  EXPECT_EQ(run("--json set FUL=30 SEN=AUTO --dry-run"),
            (Outcome{ExitStatus::done, documentText(expected) + "\n", ""}));
}

}  // namespace
}  // namespace quorvane
