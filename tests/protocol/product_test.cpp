#include "protocol/product.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <limits>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quorvane::product_test {
namespace {

struct Row {
  std::int64_t productID;
  std::string_view name;
  ProductKind kind;
  std::int64_t maxRotation;
  std::int64_t autoRotation;
  TuningFamily family;
};

constexpr ProductKind base = ProductKind::wheelBase;
constexpr ProductKind pedals = ProductKind::pedals;
constexpr TuningFamily none = TuningFamily::none;
constexpr TuningFamily classic = TuningFamily::classic;
constexpr TuningFamily elite = TuningFamily::cslElite;
constexpr TuningFamily direct = TuningFamily::directDrive;

constexpr std::array<Row, 13> catalogue{{
    {0x0001, "ClubSport Wheel Base V2", base, 900, 0, classic},
    {0x0004, "ClubSport Wheel Base V2.5", base, 900, 0, classic},
    {0x0005, "CSL Elite Wheel Base (PS4)", base, 1080, 1090, elite},
    {0x0006, "Podium Wheel Base DD1", base, 2520, 2530, direct},
    {0x0007, "Podium Wheel Base DD2", base, 2520, 2530, direct},
    {0x0011, "CSR Elite Wheel Base", base, 900, 0, none},
    {0x0020, "CSL DD / GT DD Pro / ClubSport DD", base, 2520, 2530, direct},
    {0x0197, "Porsche 911 Wheel Base", base, 900, 0, none},
    {0x0E03, "CSL Elite Wheel Base", base, 1080, 1090, elite},
    {0x183B, "ClubSport Pedals V3", pedals, 0, 0, none},
    {0x6204, "CSL Elite Pedals", pedals, 0, 0, none},
    {0x6205, "CSL Elite Pedals (Load Cell)", pedals, 0, 0, none},
    {0x6206, "CSL Pedals (Load Cell V2)", pedals, 0, 0, none},
}};

void expectRow(const FanatecProduct& product, const Row& row) {
  EXPECT_EQ(product.productID, row.productID);
  EXPECT_EQ(product.name, row.name);
  EXPECT_EQ(product.kind, row.kind);
  EXPECT_EQ(product.maxRotation, row.maxRotation);
  EXPECT_EQ(product.autoRotation, row.autoRotation);
  EXPECT_EQ(product.tuningFamily, row.family);
}

TEST(Fanatec, HasItsVendorID) {
  EXPECT_EQ(Fanatec::vendorID, 0x0EB7);
  EXPECT_EQ(Fanatec::vendorID, 3767);
}

TEST(FanatecProduct, ListsTheCatalogueInOrder) {
  const auto all = FanatecProduct::all();
  ASSERT_EQ(all.size(), catalogue.size());
  for (std::size_t i = 0; i < catalogue.size(); ++i) {
    SCOPED_TRACE(i);
    expectRow(all[i], catalogue[i]);
  }
}

TEST(FanatecProduct, LooksUpEveryRowByItsID) {
  for (const Row& row : catalogue) {
    SCOPED_TRACE(row.name);
    const auto product = FanatecProduct::lookup(row.productID);
    ASSERT_TRUE(product.has_value());
    expectRow(*product, row);
  }
}

TEST(FanatecProduct, LooksUpTheCslEliteBase) {
  const auto product = FanatecProduct::lookup(0x0E03);
  ASSERT_TRUE(product.has_value());
  EXPECT_EQ(product->name, "CSL Elite Wheel Base");
  EXPECT_EQ(product->tuningFamily, TuningFamily::cslElite);
}

TEST(FanatecProduct, KnowsNoOtherIDOfSixteenBits) {
  std::set<std::int64_t> known;
  for (const Row& row : catalogue) known.insert(row.productID);
  for (std::int64_t id = 0; id <= 0xFFFF; ++id) {
    ASSERT_EQ(FanatecProduct::lookup(id).has_value(), known.contains(id)) << id;
  }
}

TEST(FanatecProduct, MasksNothingWhenItLooksUp) {
  EXPECT_EQ(FanatecProduct::lookup(0), std::nullopt);
  EXPECT_EQ(FanatecProduct::lookup(-1), std::nullopt);
  EXPECT_EQ(FanatecProduct::lookup(0x10020), std::nullopt);
  EXPECT_EQ(FanatecProduct::lookup(0x1'0000'0020), std::nullopt);
  EXPECT_EQ(FanatecProduct::lookup(-0x0020), std::nullopt);
  EXPECT_EQ(FanatecProduct::lookup(std::numeric_limits<std::int64_t>::min()), std::nullopt);
  EXPECT_EQ(FanatecProduct::lookup(std::numeric_limits<std::int64_t>::max()), std::nullopt);
}

TEST(FanatecProduct, DescribesKnownAndUnknownIDs) {
  for (const Row& row : catalogue) EXPECT_EQ(FanatecProduct::describe(row.productID), row.name);

  const std::vector<std::pair<std::int64_t, std::string>> unknown{
      {0x0000, "Unknown Fanatec device 0x0000"}, {0x00FF, "Unknown Fanatec device 0x00FF"},
      {0x1234, "Unknown Fanatec device 0x1234"}, {0xABCD, "Unknown Fanatec device 0xABCD"},
      {0xFFFF, "Unknown Fanatec device 0xFFFF"}, {0x12345, "Unknown Fanatec device 0x12345"},
  };
  for (const auto& [id, text] : unknown) EXPECT_EQ(FanatecProduct::describe(id), text);
}

TEST(FanatecProduct, HasATuningMenuUnlessItsFamilyIsNone) {
  const std::set<std::int64_t> without{0x0011, 0x0197, 0x183B, 0x6204, 0x6205, 0x6206};
  for (const FanatecProduct& product : FanatecProduct::all()) {
    EXPECT_EQ(product.hasTuningMenu(), !without.contains(product.productID)) << product.name;
  }
}

TEST(FanatecProduct, UsesExtendedSensitivityOnDirectDriveBasesOnly) {
  const std::set<std::int64_t> extended{0x0006, 0x0007, 0x0020};
  for (const FanatecProduct& product : FanatecProduct::all()) {
    EXPECT_EQ(product.usesExtendedSensitivity(), extended.contains(product.productID))
        << product.name;
  }
}

TEST(FanatecProduct, PutsTheAutomaticAngleTenDegreesAboveTheLargest) {
  for (const FanatecProduct& product : FanatecProduct::all()) {
    if (product.autoRotation == 0) continue;
    EXPECT_EQ(product.autoRotation, product.maxRotation + 10) << product.name;
  }
}

TEST(FanatecProduct, IsEqualFieldByField) {
  const FanatecProduct product{0x0020, "A base", base, 900, 910, classic};
  EXPECT_EQ(product, (FanatecProduct{0x0020, "A base", base, 900, 910, classic}));
  EXPECT_NE(product, (FanatecProduct{0x0021, "A base", base, 900, 910, classic}));
  EXPECT_NE(product, (FanatecProduct{0x0020, "a base", base, 900, 910, classic}));
  EXPECT_NE(product, (FanatecProduct{0x0020, "A base", pedals, 900, 910, classic}));
  EXPECT_NE(product, (FanatecProduct{0x0020, "A base", base, 901, 910, classic}));
  EXPECT_NE(product, (FanatecProduct{0x0020, "A base", base, 900, 911, classic}));
  EXPECT_NE(product, (FanatecProduct{0x0020, "A base", base, 900, 910, elite}));
}

TEST(ProductKind, HasAText) {
  EXPECT_EQ(rawValue(ProductKind::wheelBase), "wheel base");
  EXPECT_EQ(rawValue(ProductKind::pedals), "pedals");
  EXPECT_LT(ProductKind::wheelBase, ProductKind::pedals);
}

TEST(ProductKind, ComesFromExactlyItsText) {
  EXPECT_EQ(productKind("wheel base"), ProductKind::wheelBase);
  EXPECT_EQ(productKind("pedals"), ProductKind::pedals);
  for (const std::string_view text :
       {"", "Wheel Base", "WHEEL BASE", "Wheel base", "wheelBase", "wheel  base", "wheel base ",
        " pedals", "Pedals", "pedal", "none"}) {
    EXPECT_EQ(productKind(text), std::nullopt) << text;
  }
}

}  // namespace
}  // namespace quorvane::product_test
