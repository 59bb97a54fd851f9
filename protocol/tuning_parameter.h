#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "protocol/product.h"

namespace quorvane {

// A range that includes both bounds.
struct ClosedRange {
  std::int64_t lower = 0;
  std::int64_t upper = 0;

  bool contains(std::int64_t value) const { return value >= lower && value <= upper; }
  bool operator==(const ClosedRange&) const = default;
};

// One setting of the base's tuning menu. protocol/setting.h has the facts about each.
//
// Values are integers in display units (degrees, percent, ...). Without a product, functions assume
// the fullest menu: every setting, the widest ranges, the steering angle of direct-drive bases.
class TuningParameter {
 public:
  enum Case : std::uint8_t {
    slot,
    sensitivity,
    forceFeedback,
    vibration,
    brakeLevelIndicator,
    forceFeedbackScaling,
    driftMode,
    forceEffect,
    springEffect,
    damperEffect,
    naturalDamper,
    naturalFriction,
    brakeForce,
    forceEffectIntensity,
    analogPaddles,
    interpolation,
    naturalInertia,
    fullForce,
    caseCount  // not a setting
  };
  static constexpr std::size_t count = caseCount;

  // Implicit conversions: `TuningParameter p = TuningParameter::slot;`
  constexpr TuningParameter(Case value) : value_(value) {}  // NOLINT(google-explicit-constructor)
  constexpr operator Case() const { return value_; }        // NOLINT(google-explicit-constructor)

  // All cases in declaration order, which is the order of their bytes in the menu.
  static const std::array<TuningParameter, count>& allCases();

  // The parameter with exactly this code; for stored keys.
  static std::optional<TuningParameter> fromRawValue(std::string_view code);

  // The parameter with this code, ignoring case; for user input.
  static std::optional<TuningParameter> named(std::string_view text);

  // The settings in this product's menu, in menu order; all cases without a product.
  static std::vector<TuningParameter> available(const std::optional<FanatecProduct>& product);

  // Like available(), without `slot`, the number of the set that the others belong to.
  static std::vector<TuningParameter> adjustable(const std::optional<FanatecProduct>& product);

  // The abbreviation on the base's display; also the key in files. Unique, even ignoring case.
  std::string_view code() const;
  std::string_view title() const;
  std::string_view unit() const;  // "deg", "%" or empty
  std::int64_t step() const;

  // Position of the parameter's byte in the tuning report; the report ID is at 0.
  std::size_t offset() const;

  // The display values that can be set. The upper end for `sensitivity` is the product's
  // maxRotation; calling this for a product without steering ends the program.
  ClosedRange allowedRange(const std::optional<FanatecProduct>& product) const;

  // The allowed range without the special value.
  ClosedRange amounts(const std::optional<FanatecProduct>& product) const;

  // The label of a value that is not shown as a number ("AUT", "OFF", "LIN", ...), if any.
  std::optional<std::string_view> label(std::int64_t value,
                                        const std::optional<FanatecProduct>& product) const;

  // Whether the value is the special value ("AUT", "OFF"), as written or as the menu reports it.
  bool isSpecial(std::int64_t value, const std::optional<FanatecProduct>& product) const;

  // Whether this product's menu has the special value of the setting, if the setting has one.
  bool hasSpecial(const std::optional<FanatecProduct>& product) const;

  // The value to write for a value that the menu reports. It differs only for the special value,
  // such as 0 for the automatic steering angle.
  std::int64_t written(std::int64_t value, const std::optional<FanatecProduct>& product) const;

  // Display value of any raw byte. The result may lie outside the allowed range.
  std::int64_t decode(std::uint8_t raw, const std::optional<FanatecProduct>& product) const;

  // Raw byte of a display value. For `sensitivity`, 0 means the automatic angle.
  // Throws FanatecError notAvailable or outOfRange.
  std::uint8_t encode(std::int64_t value, const std::optional<FanatecProduct>& product) const;

 private:
  bool isAvailable(const std::optional<FanatecProduct>& product) const;
  std::uint8_t encodeInRange(std::int64_t value,
                             const std::optional<FanatecProduct>& product) const;

  Case value_;
};

}  // namespace quorvane

template <>
struct std::hash<quorvane::TuningParameter> {
  std::size_t operator()(quorvane::TuningParameter parameter) const noexcept {
    return static_cast<std::size_t>(static_cast<quorvane::TuningParameter::Case>(parameter));
  }
};
