#include "protocol/error.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <exception>
#include <limits>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace quorvane::error_test {
namespace {

using P = TuningParameter;

struct Case {
  FanatecError error;
  std::string_view kind;
  std::string message;
};

const std::vector<Case>& cases() {
  static const std::vector<Case> all{
      {FanatecError::outOfRange(P::sensitivity, 50, {90, 900}), "outOfRange",
       "SEN value 50 is outside 90...900"},
      {FanatecError::outOfRange(P::analogPaddles, 5, {1, 4}), "outOfRange",
       "ACP value 5 is outside 1...4"},
      {FanatecError::outOfRange(P::driftMode, -6, {-5, 3}), "outOfRange",
       "DRI value -6 is outside -5...3"},
      {FanatecError::outOfRange(P::forceFeedback, 1234567, {0, 100}), "outOfRange",
       "FF value 1234567 is outside 0...100"},
      {FanatecError::outOfRange(P::brakeForce, std::numeric_limits<std::int64_t>::min(), {0, 100}),
       "outOfRange", "brF value -9223372036854775808 is outside 0...100"},
      {FanatecError::notAvailable(P::naturalFriction, "ClubSport Wheel Base V2"), "notAvailable",
       "NFR is not available on ClubSport Wheel Base V2"},
      {FanatecError::timeout("tuning menu report (is the base in PC mode and on a supported "
                             "firmware?)"),
       "timeout",
       "Timed out waiting for tuning menu report (is the base in PC mode and on a supported "
       "firmware?)"},
      {FanatecError::timeout("system report (FF 08)"), "timeout",
       "Timed out waiting for system report (FF 08)"},
      {FanatecError::ioFailed("device not found"), "ioFailed", "HID I/O failed: device not found"},
      {FanatecError::ioFailed(""), "ioFailed", "HID I/O failed: "},
      {FanatecError::invalidReport("too short"), "invalidReport", "Invalid report: too short"},
      {FanatecError::writeIgnored(P::forceFeedback, 80), "writeIgnored",
       "The base ignored the FF write; it still reports 80"},
      {FanatecError::writeIgnored(P::driftMode, -5), "writeIgnored",
       "The base ignored the DRI write; it still reports -5"},
      {FanatecError::noTuningSnapshot(), "noTuningSnapshot",
       "No tuning data received from the base yet; refusing to write blind"},
      {FanatecError::notConnected(), "notConnected", "Device is not open"},
      {FanatecError::noOutputReport(), "noOutputReport",
       "Could not find the base's 7-byte output report; pass --report-id"},
  };
  return all;
}

TEST(FanatecError, SaysWhatPeopleRead) {
  for (const Case& c : cases()) {
    EXPECT_EQ(c.error.errorDescription(), c.message);
    EXPECT_STREQ(c.error.what(), c.message.c_str());
    EXPECT_EQ(c.error.kind(), c.kind);
  }
}

TEST(FanatecError, NamesEveryParameterByItsCode) {
  for (const P parameter : P::allCases()) {
    const std::string code(parameter.code());
    EXPECT_EQ(FanatecError::outOfRange(parameter, 7, {1, 2}).errorDescription(),
              code + " value 7 is outside 1...2");
    EXPECT_EQ(FanatecError::notAvailable(parameter, "it").errorDescription(),
              code + " is not available on it");
    EXPECT_EQ(FanatecError::writeIgnored(parameter, 7).errorDescription(),
              "The base ignored the " + code + " write; it still reports 7");
  }
}

TEST(FanatecError, IsEqualOnlyToItself) {
  for (std::size_t i = 0; i < cases().size(); ++i) {
    for (std::size_t j = 0; j < cases().size(); ++j) {
      EXPECT_EQ(cases()[i].error == cases()[j].error, i == j) << i << " and " << j;
    }
  }
}

TEST(FanatecError, IsComparedFieldByField) {
  const auto range = FanatecError::outOfRange(P::forceFeedback, 101, {0, 100});
  EXPECT_EQ(range, FanatecError::outOfRange(P::forceFeedback, 101, {0, 100}));
  EXPECT_NE(range, FanatecError::outOfRange(P::vibration, 101, {0, 100}));
  EXPECT_NE(range, FanatecError::outOfRange(P::forceFeedback, 102, {0, 100}));
  EXPECT_NE(range, FanatecError::outOfRange(P::forceFeedback, 101, {1, 100}));
  EXPECT_NE(range, FanatecError::outOfRange(P::forceFeedback, 101, {0, 99}));

  const auto lacking = FanatecError::notAvailable(P::fullForce, "a base");
  EXPECT_EQ(lacking, FanatecError::notAvailable(P::fullForce, "a base"));
  EXPECT_NE(lacking, FanatecError::notAvailable(P::naturalDamper, "a base"));
  EXPECT_NE(lacking, FanatecError::notAvailable(P::fullForce, "A base"));

  const auto ignored = FanatecError::writeIgnored(P::forceFeedback, 80);
  EXPECT_EQ(ignored, FanatecError::writeIgnored(P::forceFeedback, 80));
  EXPECT_NE(ignored, FanatecError::writeIgnored(P::forceFeedback, 81));
  EXPECT_NE(ignored, FanatecError::writeIgnored(P::vibration, 80));

  EXPECT_EQ(FanatecError::timeout("this"), FanatecError::timeout("this"));
  EXPECT_NE(FanatecError::timeout("this"), FanatecError::timeout("that"));
  EXPECT_NE(FanatecError::ioFailed("this"), FanatecError::ioFailed("that"));
  EXPECT_NE(FanatecError::invalidReport("this"), FanatecError::invalidReport("that"));
  EXPECT_NE(FanatecError::ioFailed("this"), FanatecError::invalidReport("this"));
  EXPECT_NE(FanatecError::ioFailed("this"), FanatecError::timeout("this"));
  EXPECT_EQ(FanatecError::noTuningSnapshot(), FanatecError::noTuningSnapshot());
  EXPECT_EQ(FanatecError::notConnected(), FanatecError::notConnected());
  EXPECT_EQ(FanatecError::noOutputReport(), FanatecError::noOutputReport());
}

TEST(FanatecError, GivesItsPayload) {
  const auto error = FanatecError::outOfRange(P::analogPaddles, 5, {1, 4});
  const auto* const payload = std::get_if<FanatecError::OutOfRange>(&error.value());
  ASSERT_NE(payload, nullptr);
  EXPECT_EQ(payload->parameter, P(P::analogPaddles));
  EXPECT_EQ(payload->value, 5);
  EXPECT_EQ(payload->allowed, (ClosedRange{1, 4}));
}

TEST(FanatecError, KeepsTheCodeOfAFailedOpeningBesideItsCase) {
  const auto error = FanatecError::ioFailed("device not found", 7);
  EXPECT_EQ(error.openCode(), 7U);
  EXPECT_EQ(error, FanatecError::ioFailed("device not found"));
  EXPECT_EQ(FanatecError::ioFailed("device not found").openCode(), 0U);
  EXPECT_EQ(FanatecError::notConnected().openCode(), 0U);
}

TEST(FanatecError, IsMadeFromACase) {
  EXPECT_EQ(FanatecError(FanatecError::NotConnected{}), FanatecError::notConnected());
  EXPECT_EQ(FanatecError(FanatecError::Timeout{"this"}), FanatecError::timeout("this"));
}

TEST(FanatecError, IsCaughtAsAnException) {
  for (const Case& c : cases()) {
    try {
      throw FanatecError(c.error);
    } catch (const std::exception& error) {
      EXPECT_EQ(error.what(), c.message);
    }
  }
}

TEST(FanatecError, KeepsItsTextWhenItIsCopied) {
  const FanatecError copy = [] {
    const FanatecError original = FanatecError::timeout("a text too long to be kept in place");
    return FanatecError(original);
  }();
  EXPECT_STREQ(copy.what(), "Timed out waiting for a text too long to be kept in place");
}

}  // namespace
}  // namespace quorvane::error_test
