#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "presets/settings_text.h"
#include "support/text.h"

namespace quorvane {
namespace {

using Values = TuningPreset::Values;

struct Snippet {
  std::string text;
  Values values;
  std::vector<std::string> notUnderstood;
};

// Texts as people send them.
const std::vector<Snippet>& snippets() {
  static const std::vector<Snippet> all{
      {"SEN AUTO, FF: 100, FFS peak, NDP 25%, NFR off",
       {{"SEN", 0}, {"FF", 100}, {"FFS", 1}, {"NDP", 25}, {"NFR", 0}},
       {}},
      {"SEN AUT\nFF 100\nSHO 100\nBLI OFF\nFFS PEA\nFOR 100\nSPR 100\nDPR 100\n",
       {{"SEN", 0},
        {"FF", 100},
        {"SHO", 100},
        {"BLI", 101},
        {"FFS", 1},
        {"FOR", 100},
        {"SPR", 100},
        {"DPR", 100}},
       {}},
      {"SEN=AUTO;FF=100;NDP=50;NFR=10;NIN=5;INT=6",
       {{"SEN", 0}, {"FF", 100}, {"NDP", 50}, {"NFR", 10}, {"NIN", 5}, {"INT", 6}},
       {}},
      {"sen 900 ff 65 ffs lin ndp 15 nfr 5 nin 0 int 3 fei 100",
       {{"SEN", 900},
        {"FF", 65},
        {"FFS", 0},
        {"NDP", 15},
        {"NFR", 5},
        {"NIN", 0},
        {"INT", 3},
        {"FEI", 100}},
       {}},
      {"Hi, my GT7 settings on the CSL DD (8 Nm): SEN AUT, FF 100, FFS PEA, NDP 15. Have fun!",
       {{"SEN", 0}, {"FF", 100}, {"FFS", 1}, {"NDP", 15}},
       {"Hi", "my GT7 settings on the CSL DD", "8 Nm", "Have fun"}},
      {"In-game: Max Torque 6 to 7 by car class, FFB Sensitivity 10. FF 80, INT 4",
       {{"FF", 80}, {"INT", 4}},
       {"In-game: Max Torque 6 to 7 by car class", "FFB Sensitivity 10"}},
      {"FF100 SEN900 INT6 FF100%", {{"FF", 100}, {"SEN", 900}, {"INT", 6}}, {}},
      {"- SEN: Auto\n- FF: 80%\n- FFS: Linear\n- brF: 50\n- ACP: CbP",
       {{"SEN", 0}, {"FF", 80}, {"FFS", 0}, {"brF", 50}, {"ACP", 1}},
       {}},
      {"\u2022 SEN \u2013 AUTO\n\u2022 FF \u2013 90 %\n\u2022 NDP \u2014 30 %",
       {{"SEN", 0}, {"FF", 90}, {"NDP", 30}},
       {}},
      {"**SEN**: 1080\u00B0 | **FF**: 75 | **DRI**: -3",
       {{"SEN", 1080}, {"FF", 75}, {"DRI", -3}},
       {}},
      {"DRI \u22123, FF 50", {{"DRI", -3}, {"FF", 50}}, {}},
      {"DRI - 3, FF - 50", {{"FF", 50}}, {"DRI - 3"}},
      {"Force feedback strength 100, natural damper: 25 %, Natural Friction = 10",
       {{"FF", 100}, {"NDP", 25}, {"NFR", 10}},
       {}},
      {"FF (Force feedback strength): 100\nNDP (Natural Damper): 20\nSEN (Sensitivity): Auto",
       {{"FF", 100}, {"NDP", 20}, {"SEN", 0}},
       {}},
      {"  SEN  900 deg                  Sensitivity (steering angle)\n"
       "  FF   65 %                     Force feedback strength\n"
       "  BLI  OFF                      Brake level indicator\n"
       "  FFS  PEA                      Force feedback scaling\n"
       "  ACP  CbP (clutch bite point)  Analog paddle mode\n"
       "  INT  11                       FFB interpolation filter\n",
       {{"SEN", 900}, {"FF", 65}, {"BLI", 101}, {"FFS", 1}, {"ACP", 1}, {"INT", 11}},
       {}},
      {"SEN\nAUTO\nFF\n100\nSHO\n70", {{"SEN", 0}, {"FF", 100}, {"SHO", 70}}, {}},
      {"SEN FF SHO\n900 80 100", {}, {"SEN FF SHO", "900 80 100"}},
      {"SEN\tFF\tSHO\nFF\t80", {{"FF", 80}}, {"SEN\tFF\tSHO"}},
      {R"({"FF": 100, "SEN": 0, "FFS": 1})", {{"FF", 100}, {"SEN", 0}, {"FFS", 1}}, {}},
      {"{'FF': 55, 'NDP': 12}", {{"FF", 55}, {"NDP", 12}}, {}},
      {"FF 100 (was 80), INT 3", {{"FF", 100}, {"INT", 3}}, {"was 80"}},
      {"FF 80-100, NDP 10/20, NIN ~5, INT 2.5, FEI 50?",
       {},
       {"FF 80-100", "NDP 10/20", "NIN ~5", "INT 2.5", "FEI 50?"}},
      {"FF 100% and NDP 50 or so", {{"FF", 100}, {"NDP", 50}}, {"and", "or so"}},
      {"FF 100, later FF 80", {{"FF", 100}}, {"later FF 80"}},
      {"FF 100, FF: 100%", {{"FF", 100}}, {}},
      {"100% FF, 50% NDP", {}, {"100% FF", "50% NDP"}},
      {"Great for 100 laps, for 5 Nm bases too. FF 40",
       {{"FF", 40}},
       {"Great for 100 laps", "for 5 Nm bases too"}},
      {"ff 70 for 100 spr 0 dpr 20", {{"FF", 70}, {"FOR", 100}, {"SPR", 0}, {"DPR", 20}}, {}},
      {"Settings: FOR 100 SPR OFF DPR OFF", {{"FOR", 100}, {"SPR", 0}, {"DPR", 0}}, {"Settings"}},
      {"SPR/DPR 100, FOR/SPR 50", {}, {"SPR/DPR 100", "FOR/SPR 50"}},
      {"SEN 900/FF 80/NDP 25", {{"SEN", 900}, {"FF", 80}, {"NDP", 25}}, {}},
      {"Slot 2: FF 60, XYZ 5, MPS auto", {{"FF", 60}}, {"Slot 2", "XYZ 5", "MPS auto"}},
      {"FF 300, SEN 5000, brF 47, NDP -5",
       {{"FF", 300}, {"SEN", 5000}, {"brF", 47}, {"NDP", -5}},
       {}},
      {"Sensitivity 100, sensitivity: AUTO", {{"SEN", 0}}, {"Sensitivity 100"}},
      {"FullForce 50%, full force 40", {{"FUL", 50}}, {"full force 40"}},
      {"ACP clutch bite point, FFS Peak. BLI 75", {{"ACP", 1}, {"FFS", 1}, {"BLI", 75}}, {}},
      {"acp Bt (brake / throttle), int 0", {{"ACP", 3}, {"INT", 0}}, {}},
      {"FF += 5, FF+=5, INT +1, NDP=", {}, {"FF += 5", "FF+=5", "INT +1", "NDP"}},
      {"SEN OFF, BLI AUTO, FFS 50%, FF peak", {}, {"SEN OFF", "BLI AUTO", "FFS 50%", "FF peak"}},
      {"FF 1,000 and INT 2,5", {}, {"FF 1,000 and INT 2,5"}},
      {"FF 99999999999999999999", {}, {"FF 99999999999999999999"}},
      {"FF 80 percent, SEN 540 degrees, NDP 5 deg",
       {{"FF", 80}, {"SEN", 540}, {"NDP", 5}},
       {"deg"}},
      {"FF\uFF1A80\u3001NDP\uFF1A20\uFF0CINT\u00A06", {{"FF", 80}, {"NDP", 20}, {"INT", 6}}, {}},
      {"\U0001F3C1 FF 80 \U0001F3C1", {{"FF", 80}}, {"\U0001F3C1", "\U0001F3C1"}},
      {"", {}, {}},
      {" ,;: --- \n\n", {}, {}},
      {"Lorem ipsum dolor sit amet", {}, {"Lorem ipsum dolor sit amet"}},
      {"FF 8\xFF, INT 4", {{"INT", 4}}, {"FF 8\xFF"}},
  };
  return all;
}

TEST(SettingsInText, AreReadFromWhatPeopleSend) {
  EXPECT_GE(snippets().size(), 40U);
  for (const auto& [text, values, notUnderstood] : snippets()) {
    const SettingsInText read = settingsInText(text, std::nullopt);
    EXPECT_EQ(read.values, values) << text;
    EXPECT_EQ(read.notUnderstood, notUnderstood) << text;
  }
}

std::string inUpperCase(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  });
  return text;
}

TEST(SettingsInText, AreReadInEitherCase) {
  for (const auto& [text, values, notUnderstood] : snippets()) {
    EXPECT_EQ(settingsInText(lowerCase(text), std::nullopt).values, values) << text;
    EXPECT_EQ(settingsInText(inUpperCase(text), std::nullopt).values, values) << text;
  }
}

TEST(SettingsInText, NamesWhatTheBaseCannotTake) {
  const std::string text = "SEN 1090, FF 300, DRI -9, FUL 101, BLI 101";
  const ParameterValue force{TuningParameter::forceFeedback, 300};
  const ParameterValue angle{TuningParameter::sensitivity, 1090};
  const ParameterValue drift{TuningParameter::driftMode, -9};
  const ParameterValue full{TuningParameter::fullForce, 101};
  struct Case {
    std::optional<FanatecProduct> product;
    std::vector<ParameterValue> outOfRange;
  };
  const std::vector<Case> cases{
      {std::nullopt, {force, drift, full}},
      {FanatecProduct::lookup(0x0001), {angle, force}},
      {FanatecProduct::lookup(0x0E03), {force, drift}},
      {FanatecProduct::lookup(0x0020), {force, full}},
  };
  for (const auto& [product, outOfRange] : cases) {
    const SettingsInText read = settingsInText(text, product);
    EXPECT_EQ(read.outOfRange, outOfRange) << (product ? product->name : "no product");
    EXPECT_EQ(read.values.size(), 5U);
    EXPECT_EQ(read.notUnderstood, std::vector<std::string>{});
  }
}

}  // namespace
}  // namespace quorvane
