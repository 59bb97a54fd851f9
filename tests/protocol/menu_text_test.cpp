#include "protocol/menu_text.h"

#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "protocol/product.h"

namespace quorvane {
namespace {

using P = TuningParameter;

TEST(MenuTextParse, TakesNumbersAndTheWordsOfTheDisplay) {
  struct Case {
    P parameter;
    std::string word;
    std::optional<std::int64_t> value;
  };
  const std::vector<Case> cases{
      {P::forceFeedback, "80", 80},
      {P::forceFeedback, "0", 0},
      {P::forceFeedback, "-7", -7},
      {P::forceFeedback, "9999", 9999},
      {P::driftMode, "-3", -3},
      {P::sensitivity, "900", 900},
      {P::sensitivity, "AUTO", 0},
      {P::sensitivity, "auto", 0},
      {P::sensitivity, "AUT", 0},
      {P::sensitivity, "Aut", 0},
      {P::sensitivity, "0", 0},
      {P::brakeLevelIndicator, "OFF", 101},
      {P::brakeLevelIndicator, "off", 101},
      {P::brakeLevelIndicator, "101", 101},
      {P::forceFeedbackScaling, "LIN", 0},
      {P::forceFeedbackScaling, "pea", 1},
      {P::analogPaddles, "CbP", 1},
      {P::analogPaddles, "CH", 2},
      {P::analogPaddles, "bt", 3},
      {P::analogPaddles, "ANA", 4},
      {P::forceFeedback, "80%", 80},
      {P::forceFeedback, "80 %", 80},
      {P::forceFeedback, "80 % (250 ms)", 80},
      {P::sensitivity, "900deg", 900},
      {P::sensitivity, "900 deg", 900},
      {P::sensitivity, "900 DEG", 900},
      {P::sensitivity, "900\u00B0", 900},
      {P::sensitivity, "AUT (250 ms)", 0},
      {P::driftMode, "-3 (250 ms)", -3},
      {P::analogPaddles, "CbP (clutch bite point)", 1},
      {P::forceFeedback, "9223372036854775807", std::numeric_limits<std::int64_t>::max()},

      {P::forceFeedback, "", std::nullopt},
      {P::forceFeedback, "+7", std::nullopt},
      {P::forceFeedback, "%", std::nullopt},
      {P::forceFeedback, "80deg", std::nullopt},
      {P::forceFeedback, "80%%", std::nullopt},
      {P::sensitivity, "900%", std::nullopt},
      {P::driftMode, "2%", std::nullopt},
      {P::forceFeedback, "(80)", std::nullopt},
      {P::forceFeedback, " 80", std::nullopt},
      {P::forceFeedback, "80 ", std::nullopt},
      {P::forceFeedback, "8.5", std::nullopt},
      {P::forceFeedback, "0x50", std::nullopt},
      {P::forceFeedback, "9223372036854775808", std::nullopt},
      {P::forceFeedback, "OFF", std::nullopt},
      {P::forceFeedback, "AUTO", std::nullopt},
      {P::sensitivity, "OFF", std::nullopt},
      {P::sensitivity, "AUTOMATIC", std::nullopt},
      {P::brakeLevelIndicator, "AUTO", std::nullopt},
      {P::forceFeedbackScaling, "LI", std::nullopt},
      {P::analogPaddles, "(clutch", std::nullopt},
  };
  for (const auto& [parameter, word, value] : cases) {
    EXPECT_EQ(MenuText::parse(parameter, word), value) << parameter.code() << " \"" << word << '"';
  }
}

TEST(MenuText, ShowsTheWordOfTheDisplayOrTheNumberWithItsUnit) {
  const auto direct = FanatecProduct::lookup(0x0020);
  const auto classic = FanatecProduct::lookup(0x0001);
  struct Case {
    P parameter;
    std::int64_t value;
    std::optional<FanatecProduct> product;
    std::string text;
  };
  const std::vector<Case> cases{
      {P::sensitivity, 900, direct, "900 deg"},
      {P::sensitivity, 2530, direct, "AUT"},
      {P::sensitivity, 2530, std::nullopt, "2530 deg"},
      {P::sensitivity, 900, classic, "900 deg"},
      {P::forceFeedback, 65, direct, "65 %"},
      {P::brakeLevelIndicator, 100, direct, "100 %"},
      {P::brakeLevelIndicator, 101, direct, "OFF"},
      {P::forceFeedbackScaling, 0, direct, "LIN"},
      {P::forceFeedbackScaling, 1, direct, "PEA"},
      {P::driftMode, -3, direct, "-3"},
      {P::analogPaddles, 1, direct, "CbP (clutch bite point)"},
      {P::analogPaddles, 9, direct, "9"},
      {P::interpolation, 11, direct, "11"},
      {P::slot, 3, direct, "3"},
  };
  for (const auto& [parameter, value, product, text] : cases) {
    EXPECT_EQ(MenuText::text(parameter, value, product), text) << parameter.code() << ' ' << value;
  }
}

// Typing a value as the menu shows it must encode to the same byte.
TEST(MenuText, CanBeTypedBackForEveryValueOfEveryParameterOfEveryProduct) {
  for (const FanatecProduct& product : FanatecProduct::all()) {
    for (const P parameter : P::available(product)) {
      const ClosedRange range = parameter.allowedRange(product);
      std::vector<std::int64_t> values;
      for (std::int64_t value = range.lower; value <= range.upper; ++value) values.push_back(value);
      if (parameter == P::sensitivity && product.autoRotation > 0) {
        values.push_back(product.autoRotation);
      }
      for (const std::int64_t value : values) {
        const std::string text = MenuText::text(parameter, value, product);
        const auto typed = MenuText::parse(parameter, text);
        ASSERT_TRUE(typed) << product.name << ' ' << parameter.code() << '=' << text;
        EXPECT_EQ(*typed, parameter.written(value, product)) << text;
        EXPECT_EQ(parameter.encode(*typed, product), parameter.encode(value, product)) << text;
      }
    }
  }
}

TEST(WrittenValue, IsTheNumberExceptForTheAutomaticAngle) {
  const auto direct = FanatecProduct::lookup(0x0020);
  const auto elite = FanatecProduct::lookup(0x0E03);
  EXPECT_EQ(P(P::sensitivity).written(2530, direct), 0);
  EXPECT_EQ(P(P::sensitivity).written(1090, elite), 0);
  EXPECT_EQ(P(P::sensitivity).written(1090, direct), 1090);
  EXPECT_EQ(P(P::sensitivity).written(0, direct), 0);
  EXPECT_EQ(P(P::sensitivity).written(2530, std::nullopt), 2530);
  EXPECT_EQ(P(P::brakeLevelIndicator).written(101, direct), 101);
}

}  // namespace
}  // namespace quorvane
