#include "protocol/product.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

namespace quorvane {
namespace {

using enum ProductKind;

// The automatic angle of the CSL Elite and direct-drive bases lies 10 degrees above the largest
// angle that can be set: their menus show it as one more step.
constexpr std::array<FanatecProduct, 13> products{{
    {0x0001, "ClubSport Wheel Base V2", wheelBase, 900, 0, TuningFamily::classic},
    {0x0004, "ClubSport Wheel Base V2.5", wheelBase, 900, 0, TuningFamily::classic},
    {0x0005, "CSL Elite Wheel Base (PS4)", wheelBase, 1080, 1090, TuningFamily::cslElite},
    {0x0006, "Podium Wheel Base DD1", wheelBase, 2520, 2530, TuningFamily::directDrive},
    {0x0007, "Podium Wheel Base DD2", wheelBase, 2520, 2530, TuningFamily::directDrive},
    {0x0011, "CSR Elite Wheel Base", wheelBase, 900, 0, TuningFamily::none},
    {0x0020, "CSL DD / GT DD Pro / ClubSport DD", wheelBase, 2520, 2530, TuningFamily::directDrive},
    {0x0197, "Porsche 911 Wheel Base", wheelBase, 900, 0, TuningFamily::none},
    {0x0E03, "CSL Elite Wheel Base", wheelBase, 1080, 1090, TuningFamily::cslElite},
    {0x183B, "ClubSport Pedals V3", pedals, 0, 0, TuningFamily::none},
    {0x6204, "CSL Elite Pedals", pedals, 0, 0, TuningFamily::none},
    {0x6205, "CSL Elite Pedals (Load Cell)", pedals, 0, 0, TuningFamily::none},
    {0x6206, "CSL Pedals (Load Cell V2)", pedals, 0, 0, TuningFamily::none},
}};

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
  const auto* const row = std::find_if(
      products.begin(), products.end(),
      [productID](const FanatecProduct& product) { return product.productID == productID; });
  if (row == products.end()) return std::nullopt;
  return *row;
}

std::string FanatecProduct::describe(std::int64_t productID) {
  if (const auto product = lookup(productID)) return std::string(product->name);
  return fmt::format("Unknown Fanatec device 0x{:04X}", static_cast<std::uint32_t>(productID));
}

}  // namespace quorvane
