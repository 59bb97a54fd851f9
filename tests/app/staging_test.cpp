#include "app/staging.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane {
namespace {

using P = TuningParameter;
using Product = std::optional<FanatecProduct>;

constexpr std::int64_t podium = 0x0006;
constexpr std::int64_t elite = 0x0E03;
constexpr std::int64_t classic = 0x0001;

// A menu with this value in every byte.
TuningSnapshot menuOf(std::uint8_t byte) {
  Bytes report(TuningSnapshot::length, byte);
  report[0] = TuningSnapshot::reportID;
  report[1] = TuningSnapshot::subID;
  return TuningSnapshot::fromReport(report, {}).value();
}

TuningSnapshot menuWith(P parameter, std::int64_t value, const Product& product) {
  return menuOf(parameter.encode(value, product));
}

std::vector<Product> products() {
  std::vector<Product> all{std::nullopt};
  for (const FanatecProduct& product : FanatecProduct::all()) all.emplace_back(product);
  return all;
}

TEST(Staging, NothingIsCurrentWithoutAMenu) {
  for (const Product& product : products()) {
    for (const P parameter : P::allCases()) {
      EXPECT_FALSE(isCurrentValue({parameter, 0}, std::nullopt, product)) << parameter.code();
    }
  }
}

TEST(Staging, AValueIsCurrentExactlyWhenTheMenuShowsIt) {
  for (const Product& product : products()) {
    for (const P parameter : P::allCases()) {
      for (unsigned byte = 0; byte <= 0xFF; ++byte) {
        const auto menu = menuOf(static_cast<std::uint8_t>(byte));
        const std::int64_t current = menu.value(parameter, product);
        ASSERT_TRUE(isCurrentValue({parameter, current}, menu, product))
            << parameter.code() << " " << current;
        for (const std::int64_t other : {current - 1, current + 1, current + 256}) {
          if (parameter == P::sensitivity && other == 0) continue;
          ASSERT_FALSE(isCurrentValue({parameter, other}, menu, product))
              << parameter.code() << " " << current << " " << other;
        }
      }
    }
  }
}

TEST(Staging, SensitivityZeroIsCurrentExactlyWhenTheAutomaticAngleIsInForce) {
  for (const Product& product : products()) {
    for (unsigned byte = 0; byte <= 0xFF; ++byte) {
      const auto menu = menuOf(static_cast<std::uint8_t>(byte));
      const std::int64_t current = menu.value(P::sensitivity, product);
      const bool expected = current == 0 || (product && current == product->autoRotation);
      ASSERT_EQ(isCurrentValue({P::sensitivity, 0}, menu, product), expected)
          << (product ? product->name : "no product") << " " << current;
    }
  }
}

TEST(Staging, TheAutomaticAngleIsTheProductsOwn) {
  struct Case {
    Product product;
    std::int64_t current;
    bool zeroIsCurrent;
  };
  const std::vector<Case> cases{
      {FanatecProduct::lookup(podium), 2530, true},
      {FanatecProduct::lookup(podium), 2520, false},
      {FanatecProduct::lookup(podium), 1090, false},
      {FanatecProduct::lookup(elite), 1090, true},
      {FanatecProduct::lookup(elite), 1080, false},
      {FanatecProduct::lookup(classic), 900, false},
      {std::nullopt, 2520, false},
  };
  for (const auto& [product, current, zeroIsCurrent] : cases) {
    const auto menu = menuWith(P::sensitivity, current, product);
    ASSERT_EQ(menu.value(P::sensitivity, product), current);
    EXPECT_EQ(isCurrentValue({P::sensitivity, 0}, menu, product), zeroIsCurrent) << current;
    EXPECT_FALSE(isCurrentValue({P::forceFeedback, 0}, menu, product));
  }
}

struct Demo {
  std::string_view text;
  std::vector<ParameterValue> edits;
};

TEST(Staging, ReadsTheEditsOfADemo) {
  const std::vector<Demo> demos{
      {"", {}},
      {"SEN=900", {{P::sensitivity, 900}}},
      {"SEN=900,FF=80", {{P::sensitivity, 900}, {P::forceFeedback, 80}}},
      {"FF=80,SEN=900", {{P::forceFeedback, 80}, {P::sensitivity, 900}}},
      {"FF=80,FF=81", {{P::forceFeedback, 80}, {P::forceFeedback, 81}}},
      {"sen=900,BRF=50,Ff=7", {{P::sensitivity, 900}, {P::brakeForce, 50}, {P::forceFeedback, 7}}},
      {"DRI=-5", {{P::driftMode, -5}}},
      {"SLOT=3,FUL=100", {{P::slot, 3}, {P::fullForce, 100}}},
  };
  for (const auto& [text, edits] : demos) EXPECT_EQ(parseDemoStage(text), edits) << text;
}

TEST(Staging, SkipsThePiecesOfADemoThatAreNoEdit) {
  const std::vector<Demo> demos{
      {",", {}},
      {",,,SEN=900,,", {{P::sensitivity, 900}}},
      {",SEN=900,XYZ=5,FF=high", {{P::sensitivity, 900}}},
      {"SEN", {}},
      {"=", {}},
      {"SEN=", {}},
      {"=900", {}},
      {"SEN=900=1,FF=80", {{P::forceFeedback, 80}}},
      {"SEN==900", {}},
      {"SEN =900,FF= 80", {}},
      {"SEN=0x10,FF=8.0,NDP=5%", {}},
      {"SEN=99999999999999999999,FF=80", {{P::forceFeedback, 80}}},
      {"SEN=900;FF=80", {}},
  };
  for (const auto& [text, edits] : demos) EXPECT_EQ(parseDemoStage(text), edits) << text;
}

}  // namespace
}  // namespace quorvane
