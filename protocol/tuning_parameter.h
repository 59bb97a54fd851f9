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

// Both bounds belong to the range.
struct ClosedRange {
  std::int64_t lower = 0;
  std::int64_t upper = 0;

  bool contains(std::int64_t value) const { return value >= lower && value <= upper; }
  bool operator==(const ClosedRange&) const = default;
};

// One setting of the tuning menu that the base keeps. Its facts are a row of protocol/setting.h.
//
// Values are integers in display units (degrees, percent, ...). Functions that take a product
// accept none: they then speak of the largest menu there is.
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
    caseCount  // no setting
  };
  static constexpr std::size_t count = caseCount;

  // Cases are parameters: `TuningParameter p = TuningParameter::slot;`
  constexpr TuningParameter(Case value) : value_(value) {}  // NOLINT(google-explicit-constructor)
  constexpr operator Case() const { return value_; }        // NOLINT(google-explicit-constructor)

  // Every case in declaration order, which is the order of the menu's bytes.
  static const std::array<TuningParameter, count>& allCases();

  // Exact match of a code; for stored keys.
  static std::optional<TuningParameter> fromRawValue(std::string_view code);

  // Match of a code ignoring case; for words that people typed.
  static std::optional<TuningParameter> named(std::string_view text);

  // What this product's menu offers, in menu order; all cases without a product.
  static std::vector<TuningParameter> available(const std::optional<FanatecProduct>& product);

  // As `available`, without `slot`, which says what set the others belong to.
  static std::vector<TuningParameter> adjustable(const std::optional<FanatecProduct>& product);

  // The abbreviation on the base's own display; also the key in files. Unique ignoring case.
  std::string_view code() const;
  std::string_view title() const;
  std::string_view unit() const;  // "deg", "%" or empty
  std::int64_t step() const;

  // Position of the parameter's byte in the tuning report, the report ID counted as 0.
  std::size_t offset() const;

  // Settable display values. The upper end of `sensitivity` is the product's maxRotation; asking it
  // of a product without steering stops the program.
  ClosedRange allowedRange(const std::optional<FanatecProduct>& product) const;

  // The settable values that are amounts: the allowed range without the special value.
  ClosedRange amounts(const std::optional<FanatecProduct>& product) const;

  // The word that the display shows instead of the number ("AUT", "OFF", "LIN", ...), if any.
  std::optional<std::string_view> label(std::int64_t value,
                                        const std::optional<FanatecProduct>& product) const;

  // Whether the value stands for a state ("AUT", "OFF") instead of an amount.
  bool isSpecial(std::int64_t value, const std::optional<FanatecProduct>& product) const;

  // Whether this product's menu has the special value; the largest menu there is has it.
  bool hasSpecial(const std::optional<FanatecProduct>& product) const;

  // The value to write so that the menu shows this one. It differs only for a special value, such
  // as 0 for the automatic steering angle.
  std::int64_t written(std::int64_t value, const std::optional<FanatecProduct>& product) const;

  // Display value of a raw byte. Total: every byte has a value, also outside the allowed range.
  std::int64_t decode(std::uint8_t raw, const std::optional<FanatecProduct>& product) const;

  // Raw byte of a display value. For `sensitivity`, 0 stands for the automatic angle.
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
