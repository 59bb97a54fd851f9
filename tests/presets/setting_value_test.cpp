#include "presets/setting_value.h"

#include <gtest/gtest.h>

#include <vector>

#include "protocol/error.h"

namespace quorvane {
namespace {

using P = TuningParameter;
using Product = std::optional<FanatecProduct>;

constexpr std::int64_t lowest = -20;
constexpr std::int64_t highest = 2700;
constexpr std::int64_t eachUntil = 150;  // above that, only multiples of 5

std::vector<Product> productsWithSteering() {
  std::vector<Product> products{std::nullopt};
  for (const FanatecProduct& product : FanatecProduct::all()) {
    if (product.maxRotation > 0) products.emplace_back(product);
  }
  return products;
}

std::optional<std::uint8_t> encoded(P parameter, std::int64_t value, const Product& product) {
  try {
    return parameter.encode(value, product);
  } catch (const FanatecError&) {
    return std::nullopt;
  }
}

TEST(SettingValue, IsEncodedAsByTheParameterWithoutExceptions) {
  for (const Product& product : productsWithSteering()) {
    for (const P parameter : P::allCases()) {
      for (std::int64_t value = lowest; value <= highest; value += value < eachUntil ? 1 : 5) {
        const auto byte = encodedValue({parameter, value}, product);
        ASSERT_EQ(byte, encoded(parameter, value, product)) << parameter.code() << " " << value;
        const bool isTaken = product && isInRange({parameter, value}, product);
        ASSERT_EQ(isTaken, product && byte) << parameter.code() << " " << value;
      }
    }
  }
}

TEST(SettingValue, IsTheSameWhenTheByteIs) {
  const auto podium = FanatecProduct::lookup(0x0006);
  const auto elite = FanatecProduct::lookup(0x0E03);
  const auto classic = FanatecProduct::lookup(0x0001);
  struct Case {
    P parameter;
    std::int64_t a;
    std::int64_t b;
    Product product;
    bool isSame;
  };
  const std::vector<Case> cases{
      {P::sensitivity, 0, 2530, podium, true},
      {P::sensitivity, 0, 2520, podium, false},
      {P::sensitivity, 0, 1090, elite, true},
      {P::sensitivity, 2530, 2530, elite, false},
      {P::sensitivity, 0, 0, classic, false},
      {P::sensitivity, 890, 895, classic, true},
      {P::brakeForce, 47, 40, podium, true},
      {P::brakeForce, 47, 50, podium, false},
      {P::vibration, 55, 50, elite, true},
      {P::vibration, 55, 50, classic, false},
      {P::forceFeedback, 101, 101, podium, false},
      {P::driftMode, -3, -3, elite, true},
      {P::brakeForce, 47, 40, std::nullopt, true},
      {P::sensitivity, 0, 2530, std::nullopt, false},
      {P::sensitivity, 0, 2520, std::nullopt, false},
      {P::sensitivity, 0, 0, std::nullopt, true},
      {P::sensitivity, 2530, 2530, std::nullopt, true},
      {P::sensitivity, 2540, 2540, std::nullopt, false},
  };
  for (const auto& [parameter, a, b, product, isSame] : cases) {
    EXPECT_EQ(isSameValue(parameter, a, b, product), isSame) << parameter.code() << a << " " << b;
    EXPECT_EQ(isSameValue(parameter, b, a, product), isSame) << parameter.code() << a << " " << b;
  }
}

TEST(SettingValue, IsInRangeWithoutAProductWhenAnyBaseTakesIt) {
  EXPECT_TRUE(isInRange({P::sensitivity, 2530}, {}));
  EXPECT_TRUE(isInRange({P::sensitivity, 1090}, {}));
  EXPECT_FALSE(isInRange({P::sensitivity, 2540}, {}));
  EXPECT_TRUE(isInRange({P::fullForce, 40}, {}));
  EXPECT_FALSE(isInRange({P::driftMode, 4}, {}));
  EXPECT_FALSE(isInRange({P::fullForce, 40}, FanatecProduct::lookup(0x0006)));
}

}  // namespace
}  // namespace quorvane
