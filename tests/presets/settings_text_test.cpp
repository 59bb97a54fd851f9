#include "presets/settings_text.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace quorvane {
namespace {

TuningPreset presetWith(TuningPreset::Values values) {
  TuningPreset preset;
  preset.values = std::move(values);
  return preset;
}

TEST(SettingsText, IsOneLineInMenuOrder) {
  const auto directDrive = FanatecProduct::lookup(0x0020);
  const auto elite = FanatecProduct::lookup(0x0E03);
  const auto classic = FanatecProduct::lookup(0x0001);
  struct Case {
    TuningPreset::Values values;
    std::optional<FanatecProduct> product;
    std::string text;
  };
  const std::vector<Case> cases{
      {{}, directDrive, ""},
      {{{"FF", 100}, {"SEN", 0}, {"FFS", 1}}, directDrive, "SEN AUTO, FF 100, FFS PEAK"},
      {{{"FFS", 0}, {"ACP", 1}, {"BLI", 101}}, directDrive, "BLI OFF, FFS LINEAR, ACP CbP"},
      {{{"ACP", 4}, {"brF", 50}, {"INT", 11}}, directDrive, "brF 50, ACP AnA, INT 11"},
      {{{"SEN", 2530}}, directDrive, "SEN AUTO"},
      {{{"SEN", 2530}}, elite, "SEN 2530"},
      {{{"SEN", 1090}}, elite, "SEN AUTO"},
      {{{"SEN", 1090}}, std::nullopt, "SEN 1090"},
      {{{"SEN", 0}}, classic, "SEN AUTO"},
      {{{"DRI", -3}, {"FUL", 40}}, classic, "DRI -3, FUL 40"},
      {{{"SLOT", 2}, {"FF", 5}, {"XYZ", 3}}, directDrive, "FF 5"},
      {{{"FFS", 7}, {"ACP", 0}, {"FF", 300}}, directDrive, "FF 300, FFS 7, ACP 0"},
  };
  for (const auto& [values, product, text] : cases) {
    EXPECT_EQ(settingsText(presetWith(values), product), text);
  }
}

TEST(SettingsText, HasEveryValueOfABuiltInPreset) {
  EXPECT_EQ(settingsText(TuningPreset::builtIn().at(2), std::nullopt),
            "SEN AUTO, FF 100, FFS PEAK, FOR 100, SPR 0, DPR 50, NDP 15, NFR 10, FEI 100, INT 3, "
            "NIN 5");
}

}  // namespace
}  // namespace quorvane
