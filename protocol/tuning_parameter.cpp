#include "protocol/tuning_parameter.h"

#include <algorithm>

#include "protocol/error.h"
#include "support/invariant.h"
#include "support/text.h"

namespace quorvane {
namespace {

// How a parameter's byte relates to its display value.
enum class Coding {
  plain,         // the value
  tenths,        // a tenth of the value
  flooredToTen,  // the value, rounded down to a multiple of ten when written
  signedByte,    // the value as a two's-complement byte
  steeringAngle  // a tenth of the value, or the wrapped form of the direct-drive bases
};

// Menus by family, one bit each.
constexpr unsigned classicMenu = 1;
constexpr unsigned cslEliteMenu = 2;
constexpr unsigned directDriveMenu = 4;
constexpr unsigned fullForceMenu = 8;
constexpr unsigned everyMenu = classicMenu | cslEliteMenu | directDriveMenu;

constexpr std::int64_t fullForceProductID = 0x0020;

constexpr std::int64_t lowestAngle = 90;
constexpr std::int64_t highestAngle = 2520;  // where no product says otherwise
constexpr std::int64_t brakeIndicatorOff = 101;

struct Row {
  std::string_view code;
  std::string_view title;
  std::string_view unit;
  std::int64_t step;
  ClosedRange range;
  std::size_t offset;
  Coding coding;
  unsigned menus;
};

// Indexed by TuningParameter::Case; ascending offset. Bytes 8, 15 and 18 belong to no parameter.
constexpr std::array<Row, TuningParameter::count> rows{{
    {"SLOT", "Tuning slot", "", 1, {1, 5}, 2, Coding::plain, everyMenu},
    {"SEN",
     "Sensitivity (steering angle)",
     "deg",
     10,
     {lowestAngle, highestAngle},
     3,
     Coding::steeringAngle,
     everyMenu},
    {"FF", "Force feedback strength", "%", 1, {0, 100}, 4, Coding::plain, everyMenu},
    {"SHO",
     "Wheel vibration motor",
     "%",
     10,
     {0, 100},
     5,
     Coding::tenths,
     cslEliteMenu | directDriveMenu},
    {"BLI",
     "Brake level indicator",
     "%",
     1,
     {0, brakeIndicatorOff},
     6,
     Coding::plain,
     cslEliteMenu | directDriveMenu},
    {"FFS", "Force feedback scaling", "", 1, {0, 1}, 7, Coding::plain, directDriveMenu},
    {"DRI", "Drift mode", "", 1, {-5, 3}, 9, Coding::signedByte, cslEliteMenu},
    {"FOR", "Force effect strength", "%", 10, {0, 120}, 10, Coding::tenths, everyMenu},
    {"SPR", "Spring effect strength", "%", 10, {0, 120}, 11, Coding::tenths, everyMenu},
    {"DPR", "Damper effect strength", "%", 10, {0, 120}, 12, Coding::tenths, everyMenu},
    {"NDP", "Natural damper", "%", 1, {0, 100}, 13, Coding::plain, directDriveMenu},
    {"NFR", "Natural friction", "%", 1, {0, 100}, 14, Coding::plain, directDriveMenu},
    {"brF", "Brake force (load cell)", "%", 10, {0, 100}, 16, Coding::flooredToTen, everyMenu},
    {"FEI", "Force effect intensity", "%", 10, {0, 100}, 17, Coding::flooredToTen, everyMenu},
    {"ACP", "Analog paddle mode", "", 1, {1, 4}, 19, Coding::plain, everyMenu},
    {"INT", "FFB interpolation filter", "", 1, {0, 20}, 20, Coding::plain, directDriveMenu},
    {"NIN", "Natural inertia", "%", 1, {0, 100}, 21, Coding::plain, directDriveMenu},
    {"FUL", "FullForce", "%", 1, {0, 100}, 22, Coding::plain, fullForceMenu},
}};

constexpr std::array<std::string_view, 4> paddleModes{
    "CbP (clutch bite point)",
    "CH (clutch / handbrake)",
    "Bt (brake / throttle)",
    "AnA (analog axes)",
};

const Row& row(TuningParameter parameter) {
  return rows[static_cast<std::size_t>(static_cast<TuningParameter::Case>(parameter))];
}

unsigned menusOf(const FanatecProduct& product) {
  switch (product.tuningFamily) {
    case TuningFamily::none:
      return 0;
    case TuningFamily::classic:
      return classicMenu;
    case TuningFamily::cslElite:
      return cslEliteMenu;
    case TuningFamily::directDrive:
      return product.productID == fullForceProductID ? directDriveMenu | fullForceMenu
                                                     : directDriveMenu;
  }
  invariantFailed("a product has no tuning family");
}

bool extendedAngle(const std::optional<FanatecProduct>& product) {
  return !product || product->usesExtendedSensitivity();
}

// 138...255 stand for 90...1260 degrees, 0...137 for 1270...2640.
std::int64_t decodeExtendedAngle(std::uint8_t raw) {
  return raw < 138 ? 10 * std::int64_t{raw} + 1270 : 10 * std::int64_t{raw} - 1290;
}

std::uint8_t encodeExtendedAngle(std::int64_t degrees) {
  return static_cast<std::uint8_t>(degrees / 10 - 127);
}

template <typename Match>
std::optional<TuningParameter> firstCase(Match match) {
  const auto& all = TuningParameter::allCases();
  const auto* const found = std::find_if(all.begin(), all.end(), match);
  if (found == all.end()) return std::nullopt;
  return *found;
}

}  // namespace

const std::array<TuningParameter, TuningParameter::count>& TuningParameter::allCases() {
  static constexpr std::array<TuningParameter, count> cases{
      slot,          sensitivity,          forceFeedback,
      vibration,     brakeLevelIndicator,  forceFeedbackScaling,
      driftMode,     forceEffect,          springEffect,
      damperEffect,  naturalDamper,        naturalFriction,
      brakeForce,    forceEffectIntensity, analogPaddles,
      interpolation, naturalInertia,       fullForce};
  return cases;
}

std::optional<TuningParameter> TuningParameter::fromRawValue(std::string_view code) {
  return firstCase([code](TuningParameter p) { return p.code() == code; });
}

std::optional<TuningParameter> TuningParameter::named(std::string_view text) {
  return firstCase([text](TuningParameter p) { return equalIgnoringCase(p.code(), text); });
}

std::vector<TuningParameter> TuningParameter::available(
    const std::optional<FanatecProduct>& product) {
  std::vector<TuningParameter> result;
  for (const TuningParameter parameter : allCases()) {
    if (parameter.isAvailable(product)) result.push_back(parameter);
  }
  return result;
}

std::string_view TuningParameter::code() const { return row(*this).code; }
std::string_view TuningParameter::title() const { return row(*this).title; }
std::string_view TuningParameter::unit() const { return row(*this).unit; }
std::int64_t TuningParameter::step() const { return row(*this).step; }
std::size_t TuningParameter::offset() const { return row(*this).offset; }

ClosedRange TuningParameter::allowedRange(const std::optional<FanatecProduct>& product) const {
  if (value_ != sensitivity || !product) return row(*this).range;
  invariant(product->maxRotation >= lowestAngle, "a steering range was asked of a device without");
  return {lowestAngle, product->maxRotation};
}

std::optional<std::string_view> TuningParameter::label(
    std::int64_t value, const std::optional<FanatecProduct>& product) const {
  if (value_ == sensitivity && product && product->autoRotation > 0 &&
      value == product->autoRotation) {
    return "AUT";
  }
  if (value_ == brakeLevelIndicator && value == brakeIndicatorOff) return "OFF";
  if (value_ == forceFeedbackScaling) return value == 0 ? "LIN" : "PEA";
  if (value_ == analogPaddles && row(*this).range.contains(value)) {
    return paddleModes[static_cast<std::size_t>(value - 1)];
  }
  return std::nullopt;
}

std::int64_t TuningParameter::decode(std::uint8_t raw,
                                     const std::optional<FanatecProduct>& product) const {
  switch (row(*this).coding) {
    case Coding::plain:
    case Coding::flooredToTen:
      return raw;
    case Coding::tenths:
      return 10 * std::int64_t{raw};
    case Coding::signedByte:
      return static_cast<std::int8_t>(raw);
    case Coding::steeringAngle:
      return extendedAngle(product) ? decodeExtendedAngle(raw) : 10 * std::int64_t{raw};
  }
  invariantFailed("a tuning parameter has no coding");
}

std::uint8_t TuningParameter::encode(std::int64_t value,
                                     const std::optional<FanatecProduct>& product) const {
  if (product && !isAvailable(product)) {
    throw FanatecError::notAvailable(*this, std::string(product->name));
  }
  const ClosedRange allowed = allowedRange(product);
  std::int64_t wanted = value;
  if (value_ == sensitivity && value == 0) wanted = product ? product->autoRotation : highestAngle;
  const bool automatic = value_ == sensitivity && product && product->autoRotation >= 1 &&
                         wanted == product->autoRotation;
  if (!automatic && !allowed.contains(wanted)) {
    throw FanatecError::outOfRange(*this, value, allowed);
  }
  return encodeInRange(wanted, product);
}

bool TuningParameter::isAvailable(const std::optional<FanatecProduct>& product) const {
  return !product || (row(*this).menus & menusOf(*product)) != 0;
}

std::uint8_t TuningParameter::encodeInRange(std::int64_t value,
                                            const std::optional<FanatecProduct>& product) const {
  constexpr std::string_view fits = "a tuning value does not fit its byte";
  switch (row(*this).coding) {
    case Coding::plain:
      return checkedByte(value, fits);
    case Coding::flooredToTen:
      return checkedByte(value / 10 * 10, fits);
    case Coding::tenths:
      return checkedByte(value / 10, fits);
    case Coding::signedByte:
      return static_cast<std::uint8_t>(value);
    case Coding::steeringAngle:
      return extendedAngle(product) ? encodeExtendedAngle(value) : checkedByte(value / 10, fits);
  }
  invariantFailed("a tuning parameter has no coding");
}

}  // namespace quorvane
