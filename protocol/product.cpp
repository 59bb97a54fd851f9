#include "protocol/product.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "support/invariant.h"

namespace quorvane {
namespace {

using enum ProductKind;

struct Row {
  FanatecProduct product;
  std::uint8_t baseType = 0;
  unsigned moreMenus = 0;  // bits of MenuKind besides that of the family
};

// The automatic angle of CSL Elite and direct-drive bases is 10 degrees above the largest angle to
// set: one more step in their menus.
// clang-format off
constexpr auto rows = std::to_array<Row>({
    {{0x0001, "ClubSport Wheel Base V2", wheelBase, 900, 0, TuningFamily::classic}, 1},
    {{0x0004, "ClubSport Wheel Base V2.5", wheelBase, 900, 0, TuningFamily::classic}, 2},
    {{0x0005, "CSL Elite Wheel Base (PS4)", wheelBase, 1080, 1090, TuningFamily::cslElite}, 5},
    {{0x0006, "Podium Wheel Base DD1", wheelBase, 2520, 2530, TuningFamily::directDrive}, 6},
    {{0x0007, "Podium Wheel Base DD2", wheelBase, 2520, 2530, TuningFamily::directDrive}, 8},
    {{0x0011, "CSR Elite Wheel Base", wheelBase, 900, 0, TuningFamily::none}},
    {{0x0020, "CSL DD / GT DD Pro / ClubSport DD", wheelBase, 2520, 2530,
      TuningFamily::directDrive}, 10, MenuKind::fullForce},
    {{0x0197, "Porsche 911 Wheel Base", wheelBase, 900, 0, TuningFamily::none}},
    {{0x0E03, "CSL Elite Wheel Base", wheelBase, 1080, 1090, TuningFamily::cslElite}, 4},
    {{0x183B, "ClubSport Pedals V3", pedals, 0, 0, TuningFamily::none}},
    {{0x6204, "CSL Elite Pedals", pedals, 0, 0, TuningFamily::none}},
    {{0x6205, "CSL Elite Pedals (Load Cell)", pedals, 0, 0, TuningFamily::none}},
    {{0x6206, "CSL Pedals (Load Cell V2)", pedals, 0, 0, TuningFamily::none}},
});
// clang-format on

constexpr auto products = [] {
  std::array<FanatecProduct, rows.size()> result{};
  for (std::size_t index = 0; index < rows.size(); ++index) result[index] = rows[index].product;
  return result;
}();

const Row* rowOf(std::int64_t productID) {
  const auto* const row = std::find_if(rows.begin(), rows.end(), [productID](const Row& candidate) {
    return candidate.product.productID == productID;
  });
  return row == rows.end() ? nullptr : row;
}

unsigned menuOf(TuningFamily family) {
  switch (family) {
    case TuningFamily::none:
      return 0;
    case TuningFamily::classic:
      return MenuKind::classic;
    case TuningFamily::cslElite:
      return MenuKind::cslElite;
    case TuningFamily::directDrive:
      return MenuKind::directDrive;
  }
  invariantFailed("a product has no tuning family");
}

constexpr std::string_view wheelBaseText = "wheel base";
constexpr std::string_view pedalsText = "pedals";

}  // namespace

std::string_view rawValue(ProductKind kind) {
  return kind == wheelBase ? wheelBaseText : pedalsText;
}

std::optional<ProductKind> productKind(std::string_view rawValue) {
  if (rawValue == wheelBaseText) return wheelBase;
  if (rawValue == pedalsText) return pedals;
  return std::nullopt;
}

std::span<const FanatecProduct> FanatecProduct::all() { return products; }

std::optional<FanatecProduct> FanatecProduct::lookup(std::int64_t productID) {
  const Row* const row = rowOf(productID);
  return row == nullptr ? std::nullopt : std::optional(row->product);
}

std::string FanatecProduct::describe(std::int64_t productID) {
  if (const auto product = lookup(productID)) return std::string(product->name);
  return fmt::format("Unknown Fanatec device 0x{:04X}", static_cast<std::uint32_t>(productID));
}

unsigned menusOf(const FanatecProduct& product) {
  const Row* const row = rowOf(product.productID);
  const bool isListed = row != nullptr && row->product.tuningFamily == product.tuningFamily;
  return menuOf(product.tuningFamily) | (isListed ? row->moreMenus : 0U);
}

std::uint8_t baseTypeOf(const FanatecProduct& product) {
  const Row* const row = rowOf(product.productID);
  return row == nullptr ? std::uint8_t{0} : row->baseType;
}

}  // namespace quorvane
