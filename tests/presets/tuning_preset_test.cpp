#include "presets/tuning_preset.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace quorvane {
namespace {

using P = TuningParameter;
using Product = std::optional<FanatecProduct>;
using Values = TuningPreset::Values;

constexpr WallClock::time_point received{std::chrono::seconds(1772357400)};

const std::vector<P> menu{P::slot,          P::sensitivity,          P::forceFeedback,
                          P::vibration,     P::brakeLevelIndicator,  P::forceFeedbackScaling,
                          P::driftMode,     P::forceEffect,          P::springEffect,
                          P::damperEffect,  P::naturalDamper,        P::naturalFriction,
                          P::brakeForce,    P::forceEffectIntensity, P::analogPaddles,
                          P::interpolation, P::naturalInertia,       P::fullForce};

// Every product, and none.
std::vector<Product> products() {
  std::vector<Product> all{std::nullopt};
  for (const FanatecProduct& product : FanatecProduct::all()) all.emplace_back(product);
  return all;
}

std::string nameOf(const Product& product) {
  return product ? std::string(product->name) : "no product";
}

TuningPreset withValues(Values values) {
  TuningPreset preset;
  preset.values = std::move(values);
  return preset;
}

// A preset with a different value for each parameter.
TuningPreset withEverything() {
  TuningPreset preset;
  std::int64_t value = 100;
  for (const P parameter : menu) preset.values.emplace(parameter.code(), value++);
  return preset;
}

// A menu whose byte at each offset is the offset plus `addend`.
TuningSnapshot snapshot(unsigned addend) {
  Bytes bytes(TuningSnapshot::length);
  for (std::size_t i = 2; i < bytes.size(); ++i) bytes[i] = static_cast<std::uint8_t>(i + addend);
  bytes[0] = 0xFF;
  bytes[1] = 0x03;
  return TuningSnapshot::fromReport(bytes, received).value();
}

TEST(TuningPreset, ANewOneIsEmptyButForItsID) {
  const TuningPreset preset;
  EXPECT_NE(preset.id, UUID());
  EXPECT_NE(preset.id, TuningPreset().id);
  EXPECT_EQ(preset.name + preset.game + preset.source + preset.notes, "");
  EXPECT_TRUE(preset.values.empty());
  EXPECT_FALSE(preset.isBuiltIn);
}

TEST(TuningPreset, IsEqualByEveryField) {
  const TuningPreset preset = withEverything();
  std::vector<TuningPreset> others(7, preset);
  others[0].id = UUID::random();
  others[1].name = "x";
  others[2].game = "x";
  others[3].source = "x";
  others[4].notes = "x";
  others[5].values["SEN"] += 1;
  others[6].isBuiltIn = true;
  EXPECT_EQ(preset, TuningPreset(preset));
  for (const TuningPreset& other : others) EXPECT_NE(preset, other);
}

TEST(TuningPreset, StoresValuesUnderTheirCodes) {
  EXPECT_EQ(TuningPreset::codeValues({}), Values{});
  EXPECT_EQ(TuningPreset::codeValues({{P::brakeForce, 90}, {P::sensitivity, -1}, {P::slot, 3}}),
            (Values{{"SEN", -1}, {"SLOT", 3}, {"brF", 90}}));
  std::vector<ParameterValue> everything;
  everything.reserve(menu.size());
  std::int64_t value = 100;
  for (const P parameter : menu) everything.push_back({parameter, value++});
  EXPECT_EQ(TuningPreset::codeValues(everything), withEverything().values);
}

TEST(TuningPreset, FindsTheValueOfAParameter) {
  const TuningPreset preset = withEverything();
  std::int64_t value = 100;
  for (const P parameter : menu) EXPECT_EQ(preset.value(parameter), value++) << parameter.code();
}

TEST(TuningPreset, FindsNoValueUnderAnotherSpelling) {
  const TuningPreset preset = withValues({{"BRF", 1}, {"brf", 2}, {"sen", 3}, {"FF ", 4}, {"", 5}});
  for (const P parameter : menu) EXPECT_EQ(preset.value(parameter), std::nullopt);
  EXPECT_TRUE(preset.parameters().empty());
}

TEST(TuningPreset, OneWithoutValuesHasNoParameters) {
  const TuningPreset preset;
  EXPECT_TRUE(preset.parameters().empty());
  EXPECT_TRUE(preset.applicable(std::nullopt).empty());
  for (const P parameter : menu) EXPECT_EQ(preset.value(parameter), std::nullopt);
}

TEST(TuningPreset, ListsItsParametersInMenuOrder) {
  EXPECT_EQ(withEverything().parameters(), menu);
  for (std::size_t first = 0; first < menu.size(); ++first) {
    EXPECT_EQ(withValues({{std::string(menu[first].code()), 0}}).parameters(),
              std::vector<P>{menu[first]});
    for (std::size_t second = first + 1; second < menu.size(); ++second) {
      EXPECT_EQ(
          withValues({{std::string(menu[second].code()), 0}, {std::string(menu[first].code()), 0}})
              .parameters(),
          (std::vector<P>{menu[first], menu[second]}));
    }
  }
}

TEST(TuningPreset, ListsNoCodeThatIsNoParameter) {
  const TuningPreset preset = withValues({{"ABC", 1}, {"FF", 80}, {"ZZZ", 2}, {"SENS", 3}});
  EXPECT_EQ(preset.parameters(), std::vector<P>{P::forceFeedback});
  EXPECT_EQ(preset.applicable(std::nullopt), (std::vector<ParameterValue>{{P::forceFeedback, 80}}));
}

TEST(TuningPreset, AppliesWhatTheProductsMenuHasButTheSlot) {
  const TuningPreset preset = withEverything();
  for (const Product& product : products()) {
    const std::vector<P> available = P::available(product);
    const std::set<P> offered(available.begin(), available.end());
    std::vector<ParameterValue> expected;
    for (const P parameter : menu) {
      if (parameter == P::slot || !offered.contains(parameter)) continue;
      expected.push_back({parameter, 100 + static_cast<std::int64_t>(P::Case(parameter))});
    }
    EXPECT_EQ(preset.applicable(product), expected) << nameOf(product);
  }
  EXPECT_EQ(preset.applicable(std::nullopt).size(), 17U);
  EXPECT_EQ(preset.applicable(FanatecProduct::lookup(0x0001)).size(), 8U);
  EXPECT_EQ(preset.applicable(FanatecProduct::lookup(0x0E03)).size(), 11U);
  EXPECT_EQ(preset.applicable(FanatecProduct::lookup(0x0006)).size(), 15U);
  EXPECT_EQ(preset.applicable(FanatecProduct::lookup(0x0020)).size(), 16U);
  EXPECT_EQ(preset.applicable(FanatecProduct::lookup(0x6204)).size(), 0U);
}

TEST(TuningPreset, AppliesNothingThatItHasNoValueFor) {
  const TuningPreset preset = withValues({{"FF", 80}, {"SLOT", 2}, {"brF", 90}});
  for (const std::int64_t productID : {0x0001, 0x0E03, 0x0006, 0x0020}) {
    EXPECT_EQ(preset.applicable(FanatecProduct::lookup(productID)),
              (std::vector<ParameterValue>{{P::forceFeedback, 80}, {P::brakeForce, 90}}));
  }
}

TEST(TuningPreset, CapturesEveryByteAsTheProductsMenuDecodesIt) {
  for (const Product& product : products()) {
    SCOPED_TRACE(nameOf(product));
    for (unsigned addend = 0; addend <= 0xFF; ++addend) {
      Values expected;
      for (const P parameter : P::available(product)) {
        if (parameter == P::slot) continue;
        const auto raw = static_cast<std::uint8_t>(parameter.offset() + addend);
        expected[std::string(parameter.code())] = parameter.decode(raw, product);
      }
      ASSERT_EQ(TuningPreset::capture(product, "name", snapshot(addend)).values, expected);
    }
  }
}

TEST(TuningPreset, CapturesWhatABaseShows) {
  Bytes bytes(TuningSnapshot::length);
  const std::map<std::size_t, std::uint8_t> menuBytes{
      {0, 0xFF}, {1, 0x03}, {2, 0x02},  {3, 0x7D}, {4, 80}, {5, 10},  {6, 101},
      {7, 1},    {9, 0xFB}, {10, 12},   {11, 5},   {12, 0}, {13, 50}, {14, 20},
      {16, 90},  {17, 100}, {19, 0x04}, {20, 11},  {21, 7}, {22, 33}};
  for (const auto& [offset, byte] : menuBytes) bytes[offset] = byte;
  const TuningSnapshot shown = TuningSnapshot::fromReport(bytes, received).value();
  EXPECT_EQ(TuningPreset::capture(FanatecProduct::lookup(0x0020), "", shown).values,
            (Values{{"SEN", 2520},
                    {"FF", 80},
                    {"SHO", 100},
                    {"BLI", 101},
                    {"FFS", 1},
                    {"FOR", 120},
                    {"SPR", 50},
                    {"DPR", 0},
                    {"NDP", 50},
                    {"NFR", 20},
                    {"brF", 90},
                    {"FEI", 100},
                    {"ACP", 4},
                    {"INT", 11},
                    {"NIN", 7},
                    {"FUL", 33}}));
  EXPECT_EQ(TuningPreset::capture(FanatecProduct::lookup(0x0E03), "", shown).values,
            (Values{{"SEN", 1250},
                    {"FF", 80},
                    {"SHO", 100},
                    {"BLI", 101},
                    {"DRI", -5},
                    {"FOR", 120},
                    {"SPR", 50},
                    {"DPR", 0},
                    {"brF", 90},
                    {"FEI", 100},
                    {"ACP", 4}}));
}

TEST(TuningPreset, CaptureLeavesTheSlotOut) {
  for (const Product& product : products()) {
    const TuningPreset preset = TuningPreset::capture(product, "name", snapshot(0));
    EXPECT_EQ(preset.value(P::slot), std::nullopt) << nameOf(product);
    EXPECT_FALSE(preset.values.contains("SLOT")) << nameOf(product);
    const auto available = P::available(product);
    EXPECT_EQ(preset.values.size(), available.empty() ? 0 : available.size() - 1);
  }
}

TEST(TuningPreset, CaptureMakesAUsersPresetWithAnIDOfItsOwn) {
  const auto product = FanatecProduct::lookup(0x0020);
  const TuningPreset one = TuningPreset::capture(product, "My \xC3\xA4", snapshot(0));
  const TuningPreset two = TuningPreset::capture(product, "My \xC3\xA4", snapshot(0));
  EXPECT_EQ(one.name, "My \xC3\xA4");
  EXPECT_EQ(one.game + one.source + one.notes, "");
  EXPECT_FALSE(one.isBuiltIn);
  EXPECT_EQ(one.id.text()[14], '4');
  EXPECT_NE(one.id, two.id);
  EXPECT_EQ(one.values, two.values);
}

TEST(TuningPreset, WhatWasCapturedIsWhatIsApplied) {
  for (const Product& product : products()) {
    const TuningPreset preset = TuningPreset::capture(product, "name", snapshot(0));
    EXPECT_EQ(TuningPreset::codeValues(preset.applicable(product)), preset.values);
  }
}

}  // namespace
}  // namespace quorvane
