#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace quorvane {

namespace Fanatec {

inline constexpr std::int64_t vendorID = 0x0EB7;

// As the kernel and udev write it.
inline constexpr std::string_view vendorHex = "0eb7";

}  // namespace Fanatec

enum class ProductKind { wheelBase, pedals };

// "wheel base" or "pedals".
std::string_view rawValue(ProductKind kind);

// The exact inverse of rawValue(); none for any other text.
std::optional<ProductKind> productKind(std::string_view rawValue);

// The kind of tuning menu that a device has.
enum class TuningFamily { none, classic, cslElite, directDrive };

// The menus that settings belong to, one bit each.
namespace MenuKind {

inline constexpr unsigned classic = 1;
inline constexpr unsigned cslElite = 2;
inline constexpr unsigned directDrive = 4;
inline constexpr unsigned fullForce = 8;

}  // namespace MenuKind

// One row of the catalogue of known USB devices.
struct FanatecProduct {
  std::int64_t productID = 0;  // USB product ID
  std::string_view name;       // display name
  ProductKind kind = ProductKind::wheelBase;
  std::int64_t maxRotation = 0;   // largest steering angle to set, degrees; 0: no steering
  std::int64_t autoRotation = 0;  // angle that the menu shows as automatic; 0: no automatic angle
  TuningFamily tuningFamily = TuningFamily::none;

  bool hasTuningMenu() const { return tuningFamily != TuningFamily::none; }

  // Direct-drive bases store the steering angle in a wrapped byte (see TuningParameter::decode).
  bool usesExtendedSensitivity() const { return tuningFamily == TuningFamily::directDrive; }

  auto operator<=>(const FanatecProduct&) const = default;

  // The catalogue, in look-up order.
  static std::span<const FanatecProduct> all();

  // The first row with this product ID.
  static std::optional<FanatecProduct> lookup(std::int64_t productID);

  // The row's name, or "Unknown Fanatec device 0x" and the ID as four upper-case hex digits.
  static std::string describe(std::int64_t productID);
};

// The kinds of settings in this product's menu: bits of MenuKind; 0 without a menu.
unsigned menusOf(const FanatecProduct& product);

// The base type in the product's identity report (see IdentityReport::baseType); 0 without a menu.
std::uint8_t baseTypeOf(const FanatecProduct& product);

}  // namespace quorvane
