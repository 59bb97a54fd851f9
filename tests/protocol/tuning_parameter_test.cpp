#include "protocol/tuning_parameter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdint>
#include <limits>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

#include "protocol/error.h"
#include "protocol/product.h"

namespace quorvane::tuning_parameter_test {
namespace {

using P = TuningParameter;
using Product = std::optional<FanatecProduct>;

constexpr std::int64_t smallest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();

// The coding of a value in its byte.
enum class Form { asIs, tenth, wholeTens, twosComplement, angle };

struct Row {
  P::Case parameter;
  std::string_view code;
  std::string_view title;
  std::string_view unit;
  std::int64_t step;
  std::int64_t lowest;
  std::int64_t highest;
  std::size_t offset;
  Form form;
};

constexpr std::array<Row, 18> menu{{
    {P::slot, "SLOT", "Tuning slot", "", 1, 1, 5, 2, Form::asIs},
    {P::sensitivity, "SEN", "Sensitivity (steering angle)", "deg", 10, 90, 2520, 3, Form::angle},
    {P::forceFeedback, "FF", "Force feedback strength", "%", 1, 0, 100, 4, Form::asIs},
    {P::vibration, "SHO", "Wheel vibration motor", "%", 10, 0, 100, 5, Form::tenth},
    {P::brakeLevelIndicator, "BLI", "Brake level indicator", "%", 1, 0, 101, 6, Form::asIs},
    {P::forceFeedbackScaling, "FFS", "Force feedback scaling", "", 1, 0, 1, 7, Form::asIs},
    {P::driftMode, "DRI", "Drift mode", "", 1, -5, 3, 9, Form::twosComplement},
    {P::forceEffect, "FOR", "Force effect strength", "%", 10, 0, 120, 10, Form::tenth},
    {P::springEffect, "SPR", "Spring effect strength", "%", 10, 0, 120, 11, Form::tenth},
    {P::damperEffect, "DPR", "Damper effect strength", "%", 10, 0, 120, 12, Form::tenth},
    {P::naturalDamper, "NDP", "Natural damper", "%", 1, 0, 100, 13, Form::asIs},
    {P::naturalFriction, "NFR", "Natural friction", "%", 1, 0, 100, 14, Form::asIs},
    {P::brakeForce, "brF", "Brake force (load cell)", "%", 10, 0, 100, 16, Form::wholeTens},
    {P::forceEffectIntensity, "FEI", "Force effect intensity", "%", 10, 0, 100, 17,
     Form::wholeTens},
    {P::analogPaddles, "ACP", "Analog paddle mode", "", 1, 1, 4, 19, Form::asIs},
    {P::interpolation, "INT", "FFB interpolation filter", "", 1, 0, 20, 20, Form::asIs},
    {P::naturalInertia, "NIN", "Natural inertia", "%", 1, 0, 100, 21, Form::asIs},
    {P::fullForce, "FUL", "FullForce", "%", 1, 0, 100, 22, Form::asIs},
}};

const std::vector<P> classicMenu{P::slot,        P::sensitivity,          P::forceFeedback,
                                 P::forceEffect, P::springEffect,         P::damperEffect,
                                 P::brakeForce,  P::forceEffectIntensity, P::analogPaddles};
const std::vector<P> eliteMenu{P::slot,        P::sensitivity,          P::forceFeedback,
                               P::vibration,   P::brakeLevelIndicator,  P::driftMode,
                               P::forceEffect, P::springEffect,         P::damperEffect,
                               P::brakeForce,  P::forceEffectIntensity, P::analogPaddles};
const std::vector<P> podiumMenu{P::slot,
                                P::sensitivity,
                                P::forceFeedback,
                                P::vibration,
                                P::brakeLevelIndicator,
                                P::forceFeedbackScaling,
                                P::forceEffect,
                                P::springEffect,
                                P::damperEffect,
                                P::naturalDamper,
                                P::naturalFriction,
                                P::brakeForce,
                                P::forceEffectIntensity,
                                P::analogPaddles,
                                P::interpolation,
                                P::naturalInertia};
const std::vector<P> fullForceMenu{P::slot,
                                   P::sensitivity,
                                   P::forceFeedback,
                                   P::vibration,
                                   P::brakeLevelIndicator,
                                   P::forceFeedbackScaling,
                                   P::forceEffect,
                                   P::springEffect,
                                   P::damperEffect,
                                   P::naturalDamper,
                                   P::naturalFriction,
                                   P::brakeForce,
                                   P::forceEffectIntensity,
                                   P::analogPaddles,
                                   P::interpolation,
                                   P::naturalInertia,
                                   P::fullForce};

// Which menu each product has, and how it encodes the steering angle.
struct Device {
  std::int64_t productID;
  const std::vector<P>& parameters;
  std::int64_t highestAngle;
  std::int64_t automaticAngle;  // 0: none
  bool wrappedAngle;
};

const std::vector<P> noMenu;
const std::array<Device, 13> devices{{
    {0x0001, classicMenu, 900, 0, false},
    {0x0004, classicMenu, 900, 0, false},
    {0x0005, eliteMenu, 1080, 1090, false},
    {0x0006, podiumMenu, 2520, 2530, true},
    {0x0007, podiumMenu, 2520, 2530, true},
    {0x0011, noMenu, 900, 0, false},
    {0x0020, fullForceMenu, 2520, 2530, true},
    {0x0197, noMenu, 900, 0, false},
    {0x0E03, eliteMenu, 1080, 1090, false},
    {0x183B, noMenu, 0, 0, false},
    {0x6204, noMenu, 0, 0, false},
    {0x6205, noMenu, 0, 0, false},
    {0x6206, noMenu, 0, 0, false},
}};

Product product(std::int64_t productID) { return FanatecProduct::lookup(productID); }

Product clubSport() { return product(0x0001); }
Product cslElite() { return product(0x0E03); }
Product podium() { return product(0x0006); }
Product cslDD() { return product(0x0020); }
const Product noProduct;

// The wrapped bytes: 90 degrees is 138; every 10 degrees more add 1, with 0 after 255.
std::map<std::uint8_t, std::int64_t> wrappedAngles() {
  std::map<std::uint8_t, std::int64_t> angles;
  std::uint8_t byte = 138;
  for (std::int64_t degrees = 90; degrees <= 2640; degrees += 10) angles[byte++] = degrees;
  return angles;
}

// The result of encode(): the byte, or the error.
struct Outcome {
  std::optional<std::uint8_t> byte;
  std::string error;
  bool operator==(const Outcome&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Outcome& outcome) {
  if (outcome.byte) return out << "byte " << int{*outcome.byte};
  return out << outcome.error;
}

Outcome encoded(P parameter, std::int64_t value, const Product& on) {
  try {
    return {parameter.encode(value, on), ""};
  } catch (const FanatecError& error) {
    return {std::nullopt, error.errorDescription()};
  }
}

std::optional<FanatecError> refusal(P parameter, std::int64_t value, const Product& on) {
  try {
    parameter.encode(value, on);
  } catch (const FanatecError& error) {
    return error;
  }
  return std::nullopt;
}

Outcome byte(std::uint8_t value) { return {value, ""}; }
Outcome refused(std::string text) { return {std::nullopt, std::move(text)}; }

std::string outside(const Row& row, std::int64_t value, std::int64_t lowest, std::int64_t highest) {
  return std::string(row.code) + " value " + std::to_string(value) + " is outside " +
         std::to_string(lowest) + "..." + std::to_string(highest);
}

Outcome expectedAngle(const Row& row, std::int64_t value, const Device* device) {
  const std::int64_t highest = device == nullptr ? 2520 : device->highestAngle;
  const std::int64_t automatic = device == nullptr ? 0 : device->automaticAngle;
  std::int64_t angle = value;
  if (value == 0) angle = device == nullptr ? 2520 : automatic;
  const bool isAutomatic = automatic != 0 && angle == automatic;
  if (!isAutomatic && (angle < 90 || angle > highest)) {
    return refused(outside(row, value, 90, highest));
  }
  if (device != nullptr && !device->wrappedAngle) {
    return byte(static_cast<std::uint8_t>(angle / 10));
  }
  static const auto angles = wrappedAngles();
  for (const auto& [raw, degrees] : angles) {
    if (degrees <= angle && angle < degrees + 10) return byte(raw);
  }
  return refused("no byte stands for this angle");
}

Outcome expected(const Row& row, std::int64_t value, const Device* device) {
  if (device != nullptr && std::find(device->parameters.begin(), device->parameters.end(),
                                     row.parameter) == device->parameters.end()) {
    return refused(std::string(row.code) + " is not available on " +
                   FanatecProduct::describe(device->productID));
  }
  if (row.form == Form::angle) return expectedAngle(row, value, device);
  if (value < row.lowest || value > row.highest) {
    return refused(outside(row, value, row.lowest, row.highest));
  }
  switch (row.form) {
    case Form::tenth:
      return byte(static_cast<std::uint8_t>(value / 10));
    case Form::wholeTens:
      return byte(static_cast<std::uint8_t>(value - value % 10));
    case Form::twosComplement:
      return byte(static_cast<std::uint8_t>(value < 0 ? value + 256 : value));
    case Form::asIs:
    case Form::angle:
      break;
  }
  return byte(static_cast<std::uint8_t>(value));
}

TEST(TuningParameter, ListsItsCasesInMenuOrder) {
  const auto& all = P::allCases();
  ASSERT_EQ(all.size(), 18U);
  for (std::size_t i = 0; i < menu.size(); ++i) {
    EXPECT_EQ(all[i], menu[i].parameter);
    EXPECT_EQ(static_cast<std::size_t>(menu[i].parameter), i);
  }
}

TEST(TuningParameter, IsHeldToEveryProductOfTheCatalogue) {
  std::vector<std::int64_t> held;
  held.reserve(devices.size());
  for (const Device& device : devices) held.push_back(device.productID);
  std::vector<std::int64_t> known;
  known.reserve(devices.size());
  for (const FanatecProduct& product : FanatecProduct::all()) known.push_back(product.productID);
  EXPECT_EQ(held, known);
}

TEST(TuningParameter, HasItsTextsStepAndOffset) {
  for (const Row& row : menu) {
    SCOPED_TRACE(row.code);
    const P parameter = row.parameter;
    EXPECT_EQ(parameter.code(), row.code);
    EXPECT_EQ(parameter.title(), row.title);
    EXPECT_EQ(parameter.unit(), row.unit);
    EXPECT_EQ(parameter.step(), row.step);
    EXPECT_EQ(parameter.offset(), row.offset);
  }
}

TEST(TuningParameter, LeavesThreeBytesOfTheMenuToNobody) {
  std::set<std::size_t> free;
  for (std::size_t offset = 2; offset <= 22; ++offset) free.insert(offset);
  for (const P parameter : P::allCases()) EXPECT_EQ(free.erase(parameter.offset()), 1U);
  EXPECT_EQ(free, (std::set<std::size_t>{8, 15, 18}));
}

TEST(TuningParameter, CodesAreShortAndUniqueIgnoringCase) {
  std::set<std::string> seen;
  for (const P parameter : P::allCases()) {
    std::string lower;
    for (const char c : parameter.code()) {
      lower.push_back(static_cast<char>(std::tolower(static_cast<unsigned char>(c))));
    }
    EXPECT_TRUE(seen.insert(lower).second) << parameter.code();
    EXPECT_GE(lower.size(), 2U);
    EXPECT_LE(lower.size(), 4U);
    const bool upperCase = std::all_of(parameter.code().begin(), parameter.code().end(),
                                       [](char c) { return c >= 'A' && c <= 'Z'; });
    EXPECT_EQ(upperCase, parameter != P::brakeForce) << parameter.code();
  }
}

TEST(TuningParameter, ComesFromExactlyItsCode) {
  for (const Row& row : menu) EXPECT_EQ(P::fromRawValue(row.code), P(row.parameter)) << row.code;
  for (const std::string_view text : {"", "brf", "BRF", "sen", "Sen", "SEN ", " SEN", "SE", "SENS",
                                      "Sensitivity (steering angle)", "sensitivity", "slot"}) {
    EXPECT_EQ(P::fromRawValue(text), std::nullopt) << text;
  }
}

TEST(TuningParameter, IsNamedByItsCodeInAnyCase) {
  for (const Row& row : menu) {
    std::string lower(row.code);
    std::string upper(row.code);
    std::string mixed(row.code);
    for (std::size_t i = 0; i < row.code.size(); ++i) {
      const auto c = static_cast<unsigned char>(row.code[i]);
      lower[i] = static_cast<char>(std::tolower(c));
      upper[i] = static_cast<char>(std::toupper(c));
      mixed[i] = i % 2 == 0 ? upper[i] : lower[i];
    }
    for (const std::string& text : {std::string(row.code), lower, upper, mixed}) {
      EXPECT_EQ(P::named(text), P(row.parameter)) << text;
    }
  }
  EXPECT_EQ(P::named("int"), P(P::interpolation));
  EXPECT_EQ(P::named("brf"), P(P::brakeForce));
}

TEST(TuningParameter, IsNotNamedByItsTitleOrACaseName) {
  for (const Row& row : menu) EXPECT_EQ(P::named(row.title), std::nullopt) << row.title;
  for (const std::string_view text : {"", "FFB interpolation filter", "interpolation",
                                      "forceFeedback", "FF ", " FF", "F", "FFSS", "in", "inte"}) {
    EXPECT_EQ(P::named(text), std::nullopt) << text;
  }
}

TEST(TuningParameter, OffersWhatTheProductsMenuHas) {
  for (const Device& device : devices) {
    SCOPED_TRACE(FanatecProduct::describe(device.productID));
    EXPECT_EQ(P::available(product(device.productID)), device.parameters);
  }
}

TEST(TuningParameter, OffersEverythingWithoutAProduct) {
  std::vector<P> all;
  all.reserve(menu.size());
  for (const Row& row : menu) all.emplace_back(row.parameter);
  EXPECT_EQ(P::available(noProduct), all);
}

TEST(TuningParameter, OffersFullForceOnOneProductOnly) {
  const auto full = P::available(cslDD());
  ASSERT_EQ(full.size(), 17U);
  EXPECT_EQ(full.back(), P::fullForce);
  const auto other = P::available(podium());
  ASSERT_EQ(other.size(), 16U);
  EXPECT_EQ(std::count(other.begin(), other.end(), P(P::fullForce)), 0);
}

TEST(TuningParameter, FullForceBelongsToTheProductIDAndTheFamily) {
  FanatecProduct odd = *cslDD();
  odd.tuningFamily = TuningFamily::classic;
  EXPECT_EQ(P::available(odd), classicMenu);
  odd.tuningFamily = TuningFamily::directDrive;
  odd.productID = 0x0021;
  EXPECT_EQ(P::available(odd), podiumMenu);
}

TEST(TuningParameter, HasItsRangeOnEveryProduct) {
  for (const Row& row : menu) {
    SCOPED_TRACE(row.code);
    EXPECT_EQ(P(row.parameter).allowedRange(noProduct), (ClosedRange{row.lowest, row.highest}));
    for (const Device& device : devices) {
      if (row.form == Form::angle && device.highestAngle == 0) continue;
      const std::int64_t highest = row.form == Form::angle ? device.highestAngle : row.highest;
      EXPECT_EQ(P(row.parameter).allowedRange(product(device.productID)),
                (ClosedRange{row.lowest, highest}))
          << device.productID;
    }
  }
}

TEST(TuningParameter, ARangeHoldsBothItsBounds) {
  const ClosedRange range{-5, 3};
  for (std::int64_t value = -10; value <= 10; ++value) {
    EXPECT_EQ(range.contains(value), value >= -5 && value <= 3) << value;
  }
  EXPECT_TRUE((ClosedRange{7, 7}).contains(7));
  EXPECT_NE(range, (ClosedRange{-5, 4}));
  EXPECT_NE(range, (ClosedRange{-4, 3}));
}

TEST(TuningParameterDeathTest, APedalSetHasNoSteeringRange) {
  for (const std::int64_t productID : {0x183B, 0x6204, 0x6205, 0x6206}) {
    EXPECT_DEATH(P(P::sensitivity).allowedRange(product(productID)),
                 "^quorvane: internal fault: a steering range was asked of a device without\n$");
  }
}

TEST(TuningParameter, TheSmallestSteeringRangeIsASingleAngle) {
  FanatecProduct narrow = *clubSport();
  narrow.maxRotation = 90;
  EXPECT_EQ(P(P::sensitivity).allowedRange(narrow), (ClosedRange{90, 90}));
  EXPECT_EQ(encoded(P::sensitivity, 90, narrow), byte(9));
}

TEST(TuningParameter, LabelsItsSpecialValues) {
  const std::map<std::pair<P::Case, std::int64_t>, std::string_view> labels{
      {{P::brakeLevelIndicator, 101}, "OFF"},
      {{P::forceFeedbackScaling, 0}, "LIN"},
      {{P::analogPaddles, 1}, "CbP (clutch bite point)"},
      {{P::analogPaddles, 2}, "CH (clutch / handbrake)"},
      {{P::analogPaddles, 3}, "Bt (brake / throttle)"},
      {{P::analogPaddles, 4}, "AnA (analog axes)"},
  };
  std::vector<Product> products{noProduct};
  for (const Device& device : devices) products.push_back(product(device.productID));
  for (const Product& on : products) {
    SCOPED_TRACE(on ? on->name : "no product");
    for (const Row& row : menu) {
      SCOPED_TRACE(row.code);
      for (std::int64_t value = -300; value <= 2700; ++value) {
        std::optional<std::string_view> label;
        const auto found = labels.find({row.parameter, value});
        if (found != labels.end()) {
          label = found->second;
        } else if (row.parameter == P::forceFeedbackScaling) {
          label = "PEA";
        } else if (row.parameter == P::sensitivity && on &&
                   value == (on->tuningFamily == TuningFamily::cslElite      ? 1090
                             : on->tuningFamily == TuningFamily::directDrive ? 2530
                                                                             : -1000)) {
          label = "AUT";
        }
        ASSERT_EQ(P(row.parameter).label(value, on), label) << value;
      }
    }
  }
}

TEST(TuningParameter, LabelsTheAutomaticAngleOfTheProductOnly) {
  const P sensitivity = P::sensitivity;
  EXPECT_EQ(sensitivity.label(1090, cslElite()), "AUT");
  EXPECT_EQ(sensitivity.label(2530, cslElite()), std::nullopt);
  EXPECT_EQ(sensitivity.label(2530, cslDD()), "AUT");
  EXPECT_EQ(sensitivity.label(2530, noProduct), std::nullopt);
  EXPECT_EQ(sensitivity.label(0, clubSport()), std::nullopt);
  EXPECT_EQ(sensitivity.label(0, cslDD()), std::nullopt);
}

TEST(TuningParameter, LabelsNoOrdinaryValue) {
  EXPECT_EQ(P(P::brakeLevelIndicator).label(101, cslDD()), "OFF");
  EXPECT_EQ(P(P::brakeLevelIndicator).label(100, cslDD()), std::nullopt);
  EXPECT_EQ(P(P::forceFeedback).label(101, cslDD()), std::nullopt);
  EXPECT_EQ(P(P::analogPaddles).label(0, cslDD()), std::nullopt);
  EXPECT_EQ(P(P::analogPaddles).label(5, cslDD()), std::nullopt);
  EXPECT_EQ(P(P::analogPaddles).label(largest, cslDD()), std::nullopt);
  EXPECT_EQ(P(P::analogPaddles).label(smallest, cslDD()), std::nullopt);
  EXPECT_EQ(P(P::forceFeedbackScaling).label(smallest, cslDD()), "PEA");
}

TEST(TuningParameter, DecodesEveryByteOnEveryProduct) {
  const auto angles = wrappedAngles();
  ASSERT_EQ(angles.size(), 256U);
  const auto check = [&](const Row& row, const Product& on, bool wrapped) {
    for (int raw = 0; raw <= 0xFF; ++raw) {
      std::int64_t value = raw;
      if (row.form == Form::tenth) value = raw * std::int64_t{10};
      if (row.form == Form::twosComplement && raw >= 128) value = raw - 256;
      if (row.form == Form::angle) {
        value = wrapped ? angles.at(static_cast<std::uint8_t>(raw)) : raw * std::int64_t{10};
      }
      ASSERT_EQ(P(row.parameter).decode(static_cast<std::uint8_t>(raw), on), value) << raw;
    }
  };
  for (const Row& row : menu) {
    SCOPED_TRACE(row.code);
    check(row, noProduct, true);
    for (const Device& device : devices) {
      SCOPED_TRACE(device.productID);
      check(row, product(device.productID), device.wrappedAngle);
    }
  }
}

TEST(TuningParameter, DecodesTheCornersOfTheWrappedAngle) {
  constexpr std::array<std::pair<std::uint8_t, std::int64_t>, 8> cases{{{0, 1270},
                                                                        {125, 2520},
                                                                        {126, 2530},
                                                                        {127, 2540},
                                                                        {137, 2640},
                                                                        {138, 90},
                                                                        {236, 1070},
                                                                        {255, 1260}}};
  for (const auto& [raw, degrees] : cases) {
    EXPECT_EQ(P(P::sensitivity).decode(raw, podium()), degrees);
    EXPECT_EQ(P(P::sensitivity).decode(raw, noProduct), degrees);
  }
}

TEST(TuningParameter, EncodesOrRefusesEveryValueOnEveryProduct) {
  const auto check = [](const Row& row, const Device* device) {
    const Product on = device == nullptr ? noProduct : product(device->productID);
    const std::int64_t end = row.form == Form::angle ? 2700 : 400;
    for (std::int64_t value = -150; value <= end; ++value) {
      ASSERT_EQ(encoded(row.parameter, value, on), expected(row, value, device)) << value;
    }
    for (const std::int64_t value : {smallest, smallest + 1, largest - 1, largest}) {
      ASSERT_EQ(encoded(row.parameter, value, on), expected(row, value, device)) << value;
    }
  };
  for (const Row& row : menu) {
    SCOPED_TRACE(row.code);
    check(row, nullptr);
    for (const Device& device : devices) {
      SCOPED_TRACE(device.productID);
      check(row, &device);
    }
  }
}

TEST(TuningParameter, ARefusalCarriesTheValueAsGivenAndTheRange) {
  EXPECT_EQ(refusal(P::sensitivity, 0, clubSport()),
            FanatecError::outOfRange(P::sensitivity, 0, {90, 900}));
  EXPECT_EQ(refusal(P::sensitivity, 1085, cslElite()),
            FanatecError::outOfRange(P::sensitivity, 1085, {90, 1080}));
  EXPECT_EQ(refusal(P::forceEffect, 121, noProduct),
            FanatecError::outOfRange(P::forceEffect, 121, {0, 120}));
  EXPECT_EQ(refusal(P::naturalDamper, 50, clubSport()),
            FanatecError::notAvailable(P::naturalDamper, "ClubSport Wheel Base V2"));
  EXPECT_EQ(refusal(P::naturalDamper, 50, noProduct), std::nullopt);
}

TEST(TuningParameter, ZeroDegreesStandForTheAutomaticAngle) {
  EXPECT_EQ(encoded(P::sensitivity, 0, cslElite()), byte(109));
  EXPECT_EQ(encoded(P::sensitivity, 0, product(0x0005)), byte(109));
  EXPECT_EQ(encoded(P::sensitivity, 0, cslDD()), byte(126));
  EXPECT_EQ(encoded(P::sensitivity, 0, podium()), byte(126));
  EXPECT_EQ(encoded(P::sensitivity, 0, clubSport()), refused("SEN value 0 is outside 90...900"));
}

TEST(TuningParameter, ZeroDegreesStandForTheLargestAngleWithoutAProduct) {
  EXPECT_EQ(encoded(P::sensitivity, 0, noProduct), byte(125));
  EXPECT_EQ(encoded(P::sensitivity, 2530, noProduct),
            refused("SEN value 2530 is outside 90...2520"));
}

TEST(TuningParameter, TheAutomaticAngleMayLieAboveTheRange) {
  EXPECT_EQ(encoded(P::sensitivity, 1090, cslElite()), byte(109));
  EXPECT_EQ(encoded(P::sensitivity, 1085, cslElite()),
            refused("SEN value 1085 is outside 90...1080"));
  EXPECT_EQ(encoded(P::sensitivity, 1091, cslElite()),
            refused("SEN value 1091 is outside 90...1080"));
  EXPECT_EQ(encoded(P::sensitivity, 2530, cslDD()), byte(126));
  EXPECT_EQ(encoded(P::sensitivity, 2525, cslDD()), refused("SEN value 2525 is outside 90...2520"));
}

TEST(TuningParameter, EncodesTheCornersOfTheAngles) {
  constexpr std::array<std::pair<std::int64_t, std::uint8_t>, 8> wrapped{{{90, 138},
                                                                          {1075, 236},
                                                                          {1079, 236},
                                                                          {1080, 237},
                                                                          {1260, 255},
                                                                          {1270, 0},
                                                                          {2520, 125},
                                                                          {99, 138}}};
  for (const auto& [degrees, raw] : wrapped) {
    EXPECT_EQ(encoded(P::sensitivity, degrees, cslDD()), byte(raw)) << degrees;
    EXPECT_EQ(encoded(P::sensitivity, degrees, noProduct), byte(raw)) << degrees;
  }
  EXPECT_EQ(encoded(P::sensitivity, 90, clubSport()), byte(9));
  EXPECT_EQ(encoded(P::sensitivity, 899, clubSport()), byte(89));
  EXPECT_EQ(encoded(P::sensitivity, 900, clubSport()), byte(90));
  EXPECT_EQ(encoded(P::sensitivity, 1080, cslElite()), byte(108));
}

TEST(TuningParameter, WrappedAnglesSurviveARoundTrip) {
  const P sensitivity = P::sensitivity;
  for (const Product& on : {podium(), product(0x0007), cslDD()}) {
    for (int raw = 0; raw <= 0xFF; ++raw) {
      const auto before = static_cast<std::uint8_t>(raw);
      const std::int64_t degrees = sensitivity.decode(before, on);
      if (raw >= 127 && raw <= 137) {
        EXPECT_EQ(degrees, 2540 + 10 * (raw - 127));
        EXPECT_EQ(encoded(sensitivity, degrees, on),
                  refused("SEN value " + std::to_string(degrees) + " is outside 90...2520"));
      } else {
        EXPECT_EQ(encoded(sensitivity, degrees, on), byte(before));
      }
    }
  }
}

TEST(TuningParameter, ClassicAnglesSurviveARoundTrip) {
  for (int raw = 9; raw <= 90; ++raw) {
    const auto before = static_cast<std::uint8_t>(raw);
    const std::int64_t degrees = P(P::sensitivity).decode(before, clubSport());
    EXPECT_EQ(encoded(P::sensitivity, degrees, clubSport()), byte(before));
  }
}

TEST(TuningParameter, WhatTheProductsMenuLacksIsNotAvailable) {
  EXPECT_EQ(encoded(P::naturalDamper, 50, clubSport()),
            refused("NDP is not available on ClubSport Wheel Base V2"));
  EXPECT_EQ(encoded(P::naturalDamper, 50, noProduct), byte(50));
  EXPECT_EQ(encoded(P::fullForce, 50, podium()),
            refused("FUL is not available on Podium Wheel Base DD1"));
  EXPECT_EQ(encoded(P::sensitivity, 900, product(0x6204)),
            refused("SEN is not available on CSL Elite Pedals"));
  // Availability is checked before the range.
  EXPECT_EQ(encoded(P::driftMode, 1000, cslDD()),
            refused("DRI is not available on CSL DD / GT DD Pro / ClubSport DD"));
}

TEST(TuningParameter, EffectsAreStoredInTenths) {
  EXPECT_EQ(encoded(P::forceEffect, 120, cslDD()), byte(12));
  EXPECT_EQ(encoded(P::forceEffect, 121, cslDD()), refused("FOR value 121 is outside 0...120"));
  EXPECT_EQ(encoded(P::springEffect, 119, cslDD()), byte(11));
  EXPECT_EQ(encoded(P::damperEffect, 9, cslDD()), byte(0));
  EXPECT_EQ(encoded(P::vibration, 100, cslDD()), byte(10));
}

TEST(TuningParameter, BrakeForceAndIntensityAreStoredInWholeTens) {
  for (const P parameter : {P(P::brakeForce), P(P::forceEffectIntensity)}) {
    EXPECT_EQ(encoded(parameter, 47, cslDD()), byte(40));
    EXPECT_EQ(encoded(parameter, 9, cslDD()), byte(0));
    EXPECT_EQ(encoded(parameter, 100, cslDD()), byte(100));
    EXPECT_EQ(parameter.decode(47, cslDD()), 47);
  }
}

TEST(TuningParameter, DriftModeIsStoredSigned) {
  EXPECT_EQ(encoded(P::driftMode, -5, cslElite()), byte(0xFB));
  EXPECT_EQ(encoded(P::driftMode, 3, cslElite()), byte(0x03));
  EXPECT_EQ(encoded(P::driftMode, -6, cslElite()), refused("DRI value -6 is outside -5...3"));
  EXPECT_EQ(P(P::driftMode).decode(0xFB, cslElite()), -5);
}

TEST(TuningParameter, IsAKeyOfHashedContainers) {
  std::unordered_set<P> set;
  for (const P parameter : P::allCases()) EXPECT_TRUE(set.insert(parameter).second);
  EXPECT_EQ(set.size(), 18U);
  EXPECT_TRUE(set.contains(P::sensitivity));
}

}  // namespace
}  // namespace quorvane::tuning_parameter_test
