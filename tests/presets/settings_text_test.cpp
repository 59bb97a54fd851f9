#include "presets/settings_text.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <utility>
#include <vector>

#include "presets/settings_comparison.h"

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

std::vector<std::optional<FanatecProduct>> productsWithMenu() {
  std::vector<std::optional<FanatecProduct>> products{std::nullopt};
  for (const FanatecProduct& product : FanatecProduct::all()) {
    if (product.hasTuningMenu()) products.emplace_back(product);
  }
  return products;
}

// A menu of random bytes, as a preset.
TuningPreset capturedPreset(const std::optional<FanatecProduct>& product, std::mt19937& random) {
  Bytes report(TuningSnapshot::length);
  for (std::uint8_t& byte : report) byte = static_cast<std::uint8_t>(random() & 0xFF);
  report[0] = TuningSnapshot::reportID;
  report[1] = TuningSnapshot::subID;
  return TuningPreset::capture(product, "", TuningSnapshot::fromReport(report, {}).value());
}

// Expects that the text of a preset is read as the same preset, on every base that its writer and
// its reader can have.
void expectSameAfterPasting(const TuningPreset& preset, const std::optional<FanatecProduct>& from,
                            const std::optional<FanatecProduct>& to) {
  const std::string text = settingsText(preset, from);
  const SettingsInText read = settingsInText(text, to);
  EXPECT_EQ(read.notUnderstood, std::vector<std::string>{}) << text;
  TuningPreset pasted;
  pasted.values = read.values;
  EXPECT_EQ(pasted.parameters(), preset.parameters()) << text;
  for (const TuningParameter parameter : preset.parameters()) {
    EXPECT_EQ(*pasted.value(parameter), parameter.written(*preset.value(parameter), from)) << text;
  }
  EXPECT_EQ(settingsText(pasted, from), text);
}

TEST(SettingsText, IsTheSamePresetAfterPastingForEveryProduct) {
  std::mt19937 random(20);
  for (const auto& from : productsWithMenu()) {
    std::vector<TuningPreset> presets = TuningPreset::builtIn();
    for (int i = 0; i < 20; ++i) presets.push_back(capturedPreset(from, random));
    for (const auto& to : productsWithMenu()) {
      for (const TuningPreset& preset : presets) expectSameAfterPasting(preset, from, to);
    }
    for (const TuningPreset& preset : presets) {
      const SettingsInText read = settingsInText(settingsText(preset, from), from);
      const SettingsComparison comparison(preset.values, read.values, from);
      for (const ComparedState state :
           {ComparedState::differs, ComparedState::onlyLeft, ComparedState::onlyRight}) {
        EXPECT_EQ(comparison.count(state), 0U) << rawValue(state);
      }
    }
  }
}

}  // namespace
}  // namespace quorvane
