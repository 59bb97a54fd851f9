#include "cli/preset_text.h"

#include <gtest/gtest.h>

#include "tests/cli/preset_fixture.h"

namespace quorvane {
namespace {

TEST(ListText, StandsInColumns) {
  TuningPreset first = ownPreset(firstID, "Grün", {{"FF", 1}});
  TuningPreset second = ownPreset(secondID, "Rain\nat night", {{"FF", 1}, {"SEN", 900}});
  second.game = "";
  second.source = "A \x1B friend";
  EXPECT_EQ(listText({first, second}),
            "  Grün           Custom    1 value\n"
            "  Rain at night           2 values  A   friend\n");
  EXPECT_EQ(listText({}), "");
}

TEST(ListText, ALongNamePushesItsOwnLineOnly) {
  const std::string name(60, 'x');
  EXPECT_EQ(
      listText({ownPreset(firstID, name), ownPreset(secondID, "y")}),
      "  " + name + "  Custom   0 values\n  y" + std::string(51, ' ') + "  Custom   0 values\n");
}

TEST(FullText, ShowsValuesInMenuOrderAndOtherCodesLast) {
  TuningPreset preset = ownPreset(firstID, "My GT7",
                                  {{"ABC", 7},
                                   {"ACP", 1},
                                   {"BLI", 101},
                                   {"FF", 80},
                                   {"SEN", 0},
                                   {"SLOT", 3},
                                   {"brF", 50},
                                   {"brf", -9223372036854775807}});
  preset.source = "A friend";
  preset.notes = "Max Torque 5\n\nOn a 5 Nm base: 8\r\n";
  EXPECT_EQ(fullText(preset),
            "My GT7\n"
            "  Game    Custom\n"
            "  Source  A friend\n"
            "  Notes   Max Torque 5\n"
            "          \n"
            "          On a 5 Nm base: 8 \n"
            "  Id      11111111-2222-3333-4444-AAAAAAAAAAAA\n"
            "\n"
            "  SLOT 3                        Tuning slot\n"
            "  SEN  AUTO                     Sensitivity (steering angle)\n"
            "  FF   80 %                     Force feedback strength\n"
            "  BLI  OFF                      Brake level indicator\n"
            "  brF  50 %                     Brake force (load cell)\n"
            "  ACP  CbP (clutch bite point)  Analog paddle mode\n"
            "  ABC  7                        (no setting of the menu)\n"
            "  brf  -9223372036854775807     (no setting of the menu)\n");
}

TEST(FullText, SaysWhatIsNotThere) {
  TuningPreset preset = ownPreset(firstID, "");
  preset.game = "";
  preset.isBuiltIn = true;
  EXPECT_EQ(fullText(preset),
            "\n"
            "  Game    none\n"
            "  Source  none\n"
            "  Notes   none\n"
            "  Id      (built in)\n"
            "\n"
            "  No values\n");
}

}  // namespace
}  // namespace quorvane
