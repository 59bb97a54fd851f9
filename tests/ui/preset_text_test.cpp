#include "ui/presets/preset_text.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/bytes.h"
#include "tests/ui/products.h"

namespace quorvane {
namespace {

using P = TuningParameter;

// A user preset with these values.
TuningPreset presetWith(const std::vector<ParameterValue>& values) {
  TuningPreset preset;
  preset.name = "Wet";
  preset.values = TuningPreset::codeValues(values);
  return preset;
}

// A menu with this status byte. The mode bit 0x80 means the standard menu.
TuningSnapshot menuWithStatus(std::uint8_t status) {
  Bytes report(TuningSnapshot::length);
  report[0] = TuningSnapshot::reportID;
  report[1] = TuningSnapshot::subID;
  report[2] = status;
  return TuningSnapshot::fromReport(report, {}).value();
}

TEST(PresetText, ABadgeSaysWhatWouldBeDifferent) {
  using Kind = PresetBadge::Kind;
  struct Case {
    std::vector<ParameterValue> menu;
    std::vector<ParameterValue> preset;
    PresetBadge badge;
  };
  const std::vector<Case> cases{
      {{{P::forceFeedback, 80}}, {{P::forceFeedback, 80}}, {Kind::same, "On the base now"}},
      {{{P::forceFeedback, 80}}, {{P::forceFeedback, 79}}, {Kind::differs, "1 differs"}},
      {{{P::forceFeedback, 80}},
       {{P::forceFeedback, 79}, {P::naturalDamper, 15}},
       {Kind::differs, "2 differ"}},
      {{{P::forceFeedback, 75}},
       {{P::forceFeedback, 100}},
       {Kind::stronger, "Stronger: FF 75 → 100"}},
      {{{P::forceFeedback, 76}, {P::forceEffect, 100}},
       {{P::forceFeedback, 100}},
       {Kind::differs, "1 differs"}},
      {{{P::fullForce, 0}}, {{P::fullForce, 40}}, {Kind::stronger, "Stronger: FUL 0 → 40"}},
      {{{P::forceEffect, 60}}, {{P::forceEffect, 100}}, {Kind::stronger, "Stronger: FOR 60 → 100"}},
      // Neither alone by much, but together by half.
      {{{P::forceFeedback, 80}, {P::forceEffect, 80}},
       {{P::forceFeedback, 98}, {P::forceEffect, 100}},
       {Kind::stronger, "Stronger: FOR 80 → 100"}},
      {{{P::forceFeedback, 40}, {P::forceEffect, 100}},
       {{P::forceFeedback, 60}},
       {Kind::stronger, "Stronger: FF 40 → 60"}},
      {{{P::forceFeedback, 41}, {P::forceEffect, 100}},
       {{P::forceFeedback, 61}},
       {Kind::differs, "1 differs"}},
      // Settings that do not pull harder.
      {{{P::naturalDamper, 0}}, {{P::naturalDamper, 90}}, {Kind::differs, "1 differs"}},
      {{}, {}, {}},
  };
  for (const Case& c : cases) {
    Bytes report(TuningSnapshot::length);
    report[0] = TuningSnapshot::reportID;
    report[1] = TuningSnapshot::subID;
    for (const ParameterValue& value : c.menu) {
      report[value.parameter.offset()] = value.parameter.encode(value.value, directDrive);
    }
    const TuningSnapshot menu = TuningSnapshot::fromReport(report, {}).value();
    EXPECT_EQ(presetBadge(presetWith(c.preset), menu, directDrive), c.badge) << c.badge.text;
    EXPECT_EQ(presetBadge(presetWith(c.preset), std::nullopt, directDrive), PresetBadge{});
  }
}

TEST(PresetText, ShowsAValueWithoutItsUnit) {
  struct Case {
    P parameter;
    std::int64_t value;
    std::optional<FanatecProduct> product;
    std::string shown;
    bool isWord;
  };
  const std::vector<Case> cases{{P::sensitivity, 0, directDrive, "AUTO", true},
                                {P::sensitivity, 2530, directDrive, "AUTO", true},
                                {P::sensitivity, 1090, cslElite, "AUTO", true},
                                {P::sensitivity, 0, classic, "AUTO", true},
                                {P::sensitivity, 0, std::nullopt, "AUTO", true},
                                {P::sensitivity, 900, directDrive, "900", false},
                                {P::forceFeedback, 80, directDrive, "80", false},
                                {P::forceFeedback, 0, directDrive, "0", false},
                                {P::brakeLevelIndicator, 101, directDrive, "OFF", true},
                                {P::brakeLevelIndicator, 100, directDrive, "100", false},
                                {P::forceFeedbackScaling, 0, directDrive, "LIN", true},
                                {P::forceFeedbackScaling, 1, directDrive, "PEA", true},
                                {P::analogPaddles, 1, directDrive, "CbP", true},
                                {P::driftMode, -3, cslElite, "-3", false}};
  for (const Case& c : cases) {
    EXPECT_EQ(presetValue({c.parameter, c.value}, c.product), c.shown);
    EXPECT_EQ(isWord({c.parameter, c.value}, c.product), c.isWord) << c.shown;
  }
}

TEST(PresetText, SumsUpInMenuOrderWhatTheBaseHas) {
  const TuningPreset preset = presetWith({{P::naturalInertia, 9},
                                          {P::forceFeedback, 80},
                                          {P::sensitivity, 0},
                                          {P::interpolation, 3},
                                          {P::driftMode, 2},
                                          {P::slot, 4}});
  EXPECT_EQ(presetSummary(preset, directDrive),
            "Sensitivity AUTO, Force feedback strength 80 %, FFB interpolation filter 3, Natural "
            "inertia 9 %");
  EXPECT_EQ(presetSummary(preset, cslElite),
            "Sensitivity AUTO, Force feedback strength 80 %, Drift mode 2");
  EXPECT_EQ(presetSummary(presetWith({{P::sensitivity, 540}, {P::brakeForce, 50}}), std::nullopt),
            "Sensitivity 540 deg, Brake force 50 %");
  EXPECT_EQ(presetSummary(presetWith({{P::brakeLevelIndicator, 101}}), directDrive),
            "Brake level indicator OFF");
}

TEST(PresetText, SaysWhenThereIsNothingForTheBase) {
  EXPECT_EQ(presetSummary(presetWith({}), directDrive), "No values");
  EXPECT_EQ(presetSummary(presetWith({{P::driftMode, 2}}), directDrive), "No values");
}

TEST(PresetText, AsksBeforeAPresetIsApplied) {
  TuningPreset preset = presetWith({});
  EXPECT_EQ(applyQuestion(preset), "Apply \"Wet\" to the active set?");
  preset.name = "Wet\n\"Spa\"";
  EXPECT_EQ(applyQuestion(preset), "Apply \"Wet \"Spa\"\" to the active set?");
}

TEST(PresetText, OnlyTheAutoSetIsWarnedOf) {
  const std::string warning = " This is the Auto set, so they will not survive a power cycle.";
  for (const std::uint8_t status : Bytes{0x81, 0x01}) {
    EXPECT_EQ(applyConsequence(menuWithStatus(status), 0),
              "Values will be written to set A (Auto Setup) and verified one by one." + warning);
  }
  for (const std::uint8_t status : Bytes{0x82, 0x85, 0x02, 0x04}) {
    EXPECT_EQ(applyConsequence(menuWithStatus(status), 0),
              "Values will be written to set C (Custom) and verified one by one.");
  }
}

}  // namespace
}  // namespace quorvane
