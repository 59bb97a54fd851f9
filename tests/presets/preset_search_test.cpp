#include "presets/preset_search.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quorvane {
namespace {

TuningPreset nurburgring() {
  TuningPreset preset;
  preset.name = "N\u00FCrburgring GT3";
  preset.game = "Gran Turismo 7";
  preset.source = "a friend";
  preset.notes = "Max Torque=5\nrain, \u0416";
  preset.values = {{"SEN", 900}, {"FF", 80}, {"FFS", 1}, {"BLI", 101}, {"XYZ", 3}};
  return preset;
}

TEST(PresetSearch, FindsEveryWordInSomeText) {
  struct Case {
    std::string text;
    bool isFound;
  };
  const std::vector<Case> cases{
      {"", true},
      {" \t\n", true},
      {"gt3", true},
      {"GT3 rain", true},
      {"rain GRAN friend ring", true},
      {"gt3 snow", false},
      {"Gran  Turismo", true},
      {"turismo7", false},
      {"N\u00DCRBURG", true},
      {"Nurburg", false},
      {"\u0436", true},
      {"torque=5", true},
      {"torque=6", false},

      {"FF=80", true},
      {"ff=80", true},
      {"FF=8", false},
      {"FF=80%", true},
      {"FF=80 %", true},
      {"FF=80 % rain", true},
      {"FF=80 rain", true},
      {"FF=80 snow", false},
      {"FF=", true},
      {"SPR=", false},
      {"SPR=50", false},
      {"FF=90", false},
      {"SEN=900", true},
      {"SEN=900deg", true},
      {"sen=900 deg gt3", true},
      {"SEN=900\u00B0", true},
      {"SEN=AUTO", false},
      {"FFS=PEA", true},
      {"ffs=lin", false},
      {"BLI=OFF", true},
      {"BLI=101", true},
      {"FF=80 SEN=900", true},
      {"FF=80 SEN=540", false},
      {"900", false},
      {"XYZ=3", false},
      {"FF", false},

      {"FF=80=80", false},
      {"=", true},
      {"==", false},
      {"FF=99999999999999999999", false},
      {"FF=-", false},
      {"gt3\xFF", false},
      {"\xFF\xFE", false},
      {std::string("gt3\0", 4), false},
      {std::string(100000, 'g'), false},
  };
  for (const auto& [text, isFound] : cases) {
    EXPECT_EQ(PresetSearch(text).matches(nurburgring()), isFound) << text.substr(0, 40);
  }
}

TEST(PresetSearch, TheAutomaticAngleIsOneValueInEachOfItsForms) {
  TuningPreset preset;
  for (const std::int64_t value : {0, 2530}) {
    preset.values["SEN"] = value;
    const bool isAuto = TuningParameter(TuningParameter::sensitivity).isSpecial(value, {});
    EXPECT_EQ(PresetSearch("SEN=AUTO").matches(preset), isAuto) << value;
    EXPECT_EQ(PresetSearch("sen=aut").matches(preset), isAuto) << value;
    EXPECT_EQ(PresetSearch("SEN=0").matches(preset), isAuto) << value;
  }
}

TEST(PresetSearch, BytesThatAreNoTextAreFoundAsTheyAre) {
  TuningPreset preset;
  preset.name = "spa\xFF";
  EXPECT_TRUE(PresetSearch("\xFF").matches(preset));
  EXPECT_FALSE(PresetSearch("\xFE").matches(preset));
  EXPECT_FALSE(PresetSearch("\u00FF").matches(preset));
}

TEST(PresetSearch, SaysWhatItLooksFor) {
  const PresetSearch search("Spa FF=80 WET sen=");
  EXPECT_EQ(search.words(), (std::vector<std::u32string>{U"spa", U"wet"}));
  EXPECT_EQ(search.parameters(), (std::vector<TuningParameter>{TuningParameter::forceFeedback,
                                                               TuningParameter::sensitivity}));
}

TEST(PresetSearch, AGameIsComparedAsAWhole) {
  struct Case {
    std::string game;
    bool isOfIt;
  };
  const std::vector<Case> cases{{"Gran Turismo 7", true}, {" gran turismo 7 ", true},
                                {"Gran Turismo", false},  {"", false},
                                {"GRAN TURISMO 7", true}, {"gran  turismo 7", false}};
  for (const auto& [game, isOfIt] : cases) {
    EXPECT_EQ(isForGame(nurburgring(), game), isOfIt) << game;
  }
  EXPECT_TRUE(isForGame(TuningPreset(), ""));
  EXPECT_FALSE(isForGame(TuningPreset(), "Any"));
}

}  // namespace
}  // namespace quorvane
