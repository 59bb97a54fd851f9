#include "cli/value_words.h"

#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "cli/context.h"

namespace quorvane {
namespace {

using P = TuningParameter;

TEST(ParseValueWord, TakesNumbersAndTheWordsOfTheDisplay) {
  struct Case {
    P parameter;
    std::string word;
    std::optional<std::int64_t> value;
  };
  const std::vector<Case> cases{
      {P::forceFeedback, "80", 80},
      {P::forceFeedback, "0", 0},
      {P::forceFeedback, "+7", 7},
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
      {P::forceFeedback, "9223372036854775807", std::numeric_limits<std::int64_t>::max()},

      {P::forceFeedback, "", std::nullopt},
      {P::forceFeedback, " 80", std::nullopt},
      {P::forceFeedback, "80 ", std::nullopt},
      {P::forceFeedback, "80%", std::nullopt},
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
      {P::analogPaddles, "CbP (clutch bite point)", std::nullopt},
  };
  for (const auto& [parameter, word, value] : cases) {
    EXPECT_EQ(parseValueWord(parameter, word), value) << parameter.code() << " \"" << word << '"';
  }
}

TEST(ParseAssignments, PutsThemInMenuOrder) {
  const std::vector<ParameterValue> wanted{{P::slot, 3},           {P::sensitivity, 0},
                                           {P::forceFeedback, 80}, {P::brakeLevelIndicator, 101},
                                           {P::driftMode, -3},     {P::brakeForce, 40},
                                           {P::fullForce, 10}};
  EXPECT_EQ(
      parseAssignments({"FUL=10", "brf=40", "BLI=OFF", "dri=-3", "Ff=80", "SLOT=3", "sen=auto"}),
      wanted);
}

TEST(ParseAssignments, KnowsEveryCode) {
  for (const P parameter : P::allCases()) {
    const std::vector<ParameterValue> wanted{{parameter, 1}};
    EXPECT_EQ(parseAssignments({std::string(parameter.code()) + "=1"}), wanted);
  }
}

TEST(ParseAssignments, SaysWhatIsWrong) {
  const std::string codes =
      "The codes are SLOT, SEN, FF, SHO, BLI, FFS, DRI, FOR, SPR, DPR, NDP, NFR, brF, FEI, ACP, "
      "INT, NIN, FUL";
  struct Case {
    std::vector<std::string> words;
    std::string message;
  };
  const std::vector<Case> cases{
      {{"FF"}, "\"FF\" is not of the form CODE=VALUE, such as FF=80"},
      {{""}, "\"\" is not of the form CODE=VALUE, such as FF=80"},
      {{"FF=80", "SEN:900"}, "\"SEN:900\" is not of the form CODE=VALUE, such as FF=80"},
      {{"XYZ=1"}, "There is no setting \"XYZ\". " + codes},
      {{"=1"}, "There is no setting \"\". " + codes},
      {{"FF ="}, "There is no setting \"FF \". " + codes},
      {{"FF="}, "\"\" is no value for FF: give a whole number"},
      {{"ff=much"}, "\"much\" is no value for FF: give a whole number"},
      {{"FF=1=2"}, "\"1=2\" is no value for FF: give a whole number"},
      {{"SEN=OFF"}, "\"OFF\" is no value for SEN: give a whole number or AUTO"},
      {{"BLI=on"}, "\"on\" is no value for BLI: give a whole number or OFF"},
      {{"FFS=x"}, "\"x\" is no value for FFS: give a whole number or LIN or PEA"},
      {{"ACP=x"}, "\"x\" is no value for ACP: give a whole number or CbP or CH or Bt or AnA"},
      {{"FF=80", "FF=80"}, "FF is given twice"},
      {{"FF=80", "SEN=900", "ff=20"}, "FF is given twice"},
  };
  for (const auto& [words, message] : cases) {
    try {
      parseAssignments(words);
      ADD_FAILURE() << "accepted: " << message;
    } catch (const UsageError& error) {
      EXPECT_EQ(error.what(), message);
    }
  }
}

TEST(ValueText, ShowsTheWordOfTheDisplayOrTheNumberWithItsUnit) {
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
    EXPECT_EQ(valueText(parameter, value, product), text) << parameter.code() << ' ' << value;
  }
}

}  // namespace
}  // namespace quorvane
