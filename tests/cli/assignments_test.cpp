#include "cli/assignments.h"

#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "cli/context.h"
#include "simulator/simulated_base.h"

namespace quorvane {
namespace {

using P = TuningParameter;

TEST(ParseAssignments, PutsThemInMenuOrder) {
  const std::vector<Assignment> wanted{{P::slot, 3},           {P::sensitivity, 0},
                                       {P::forceFeedback, 80}, {P::brakeLevelIndicator, 101},
                                       {P::driftMode, -3},     {P::brakeForce, 40},
                                       {P::fullForce, 10}};
  EXPECT_EQ(
      parseAssignments({"FUL=10", "brf=40", "BLI=OFF", "dri=-3", "Ff=80", "SLOT=3", "sen=auto"}),
      wanted);
}

TEST(ParseAssignments, KnowsEveryCode) {
  for (const P parameter : P::allCases()) {
    const std::vector<Assignment> wanted{{parameter, 1}};
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
      {{"FF=+5"}, "\"FF=+5\" could mean two things. For 5 more: FF+=5; for the value 5: FF=5"},
      {{"sen=+10 deg"},
       "\"SEN=+10 deg\" could mean two things. For 10 more: SEN+=10; for the value 10: SEN=10"},
      {{"FF=+-5"}, "\"+-5\" is no value for FF: give a whole number"},
      {{"FFS=+1"}, "\"+1\" is no value for FFS: give a whole number or LIN or PEA"},
      {{"FF+=+5"}, "\"+5\" is no number to add or take away: FF+=1 would be one"},
      {{"FF-=-5"}, "\"-5\" is no number to add or take away: FF-=1 would be one"},
      {{"SEN+=AUTO"}, "\"AUTO\" is no number to add or take away: SEN+=10 would be one"},
      {{"FF+="}, "\"\" is no number to add or take away: FF+=1 would be one"},
      {{"SHO+=5"}, "SHO goes in steps of 10: \"SHO+=5\" is no step, SHO+=10 is one"},
      {{"SEN-=15"}, "SEN goes in steps of 10: \"SEN-=15\" is no step, SEN-=10 is one"},
      {{"FFS+=1"}, "\"FFS+=1\": the values of FFS are words, with nothing to add to: LIN or PEA"},
      {{"FF*=2"}, "There is no setting \"FF*\". " + codes},
      {{"FF=80", "FF=80"}, "FF is given twice"},
      {{"FF=80", "FF+=5"}, "FF is given twice"},
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

TEST(ParseAssignments, ReadsChanges) {
  const std::vector<Assignment> wanted{{P::sensitivity, -100, true},
                                       {P::forceFeedback, 5, true},
                                       {P::driftMode, 0, true},
                                       {P::naturalFriction, 20, false}};
  EXPECT_EQ(parseAssignments({"NFR=20", "ff+=5%", "DRI-=0", "SEN-=100 deg"}), wanted);
}

TEST(ParseAssignments, ProposesWhatWasProbablyMeant) {
  struct Case {
    std::vector<std::string> words;
    std::vector<std::string> likely;
  };
  const std::vector<Case> cases{
      {{"SEN", "900"}, {"SEN=900"}},
      {{"sen", "900", "deg"}, {"SEN=900"}},
      {{"ff", "80"}, {"FF=80"}},
      {{"FF", "=", "80"}, {"FF=80"}},
      {{"FF=", "80"}, {"FF=80"}},
      {{"FF", "=80"}, {"FF=80"}},
      {{"FF:80"}, {"FF=80"}},
      {{"FF", "+=5"}, {"FF+=5"}},
      {{"FF", "-=", "5"}, {"FF-=5"}},
      {{"FX=80"}, {"FF=80"}},
      {{"SNE=900", "NFT=20"}, {"SEN=900", "NFR=20"}},
      {{"SEN", "AUTO", "FF=80"}, {"SEN=AUTO", "FF=80"}},
      {{"FF"}, {}},
      {{"FF", "loud"}, {}},
      {{"XYZ=1"}, {}},
      {{"FF=80", "FF=80"}, {}},
      {{"FF", "80", "FF", "90"}, {}},
      {{"FF=+5"}, {}},
      {{""}, {}},
  };
  for (const auto& [words, likely] : cases) {
    try {
      parseAssignments(words);
      ADD_FAILURE() << "accepted: " << words.front();
    } catch (const UsageError& error) {
      EXPECT_EQ(error.likely(), likely) << words.front();
    }
  }
}

class WantedValueOf : public testing::Test {
 protected:
  // The menu of a new base of this product, with one value changed.
  static TuningSnapshot menuWith(const FanatecProduct& product, P parameter, std::int64_t value) {
    SimulatedBase base(product);
    Bytes report = base.menu().report();
    report[parameter.offset()] = parameter.encode(value, product);
    return TuningSnapshot::fromReport(report, {}).value();
  }
};

TEST_F(WantedValueOf, AChangeCountsFromThePresentValue) {
  struct Case {
    P parameter;
    std::int64_t present;
    std::int64_t change;
    std::optional<std::int64_t> value;
    std::string error;
  };
  const std::string outside = " would be outside ";
  const std::vector<Case> cases{
      {P::forceFeedback, 65, 5, 70, ""},
      {P::forceFeedback, 65, -5, 60, ""},
      {P::forceFeedback, 65, 35, 100, ""},
      {P::forceFeedback, 65, 36, {}, "FF is 65 % now; 36 more" + outside + "0...100"},
      {P::forceFeedback, 3, -5, {}, "FF is 3 % now; 5 less" + outside + "0...100"},
      {P::sensitivity, 900, 10, 910, ""},
      {P::sensitivity, 90, -90, {}, "SEN is 90 deg now; 90 less" + outside + "90...2520"},
      {P::sensitivity, 2520, 10, {}, "SEN is 2520 deg now; 10 more" + outside + "90...2520"},
      {P::sensitivity,
       0,
       10,
       {},
       "SEN is AUT now, which is no number to change; give the value itself"},
      {P::brakeLevelIndicator, 98, 3, {}, "BLI is 98 % now; 3 more" + outside + "0...100"},
      {P::brakeLevelIndicator,
       101,
       -5,
       {},
       "BLI is OFF now, which is no number to change; give the value itself"},
      {P::vibration, 50, 10, 60, ""},
      {P::forceFeedback,
       65,
       std::numeric_limits<std::int64_t>::max(),
       {},
       "FF is 65 % now; 9223372036854775807 more" + outside + "0...100"},
  };
  const auto product = FanatecProduct::lookup(0x0020).value();
  for (const auto& [parameter, present, change, value, error] : cases) {
    const WantedValue wanted =
        wantedValue({parameter, change, true}, menuWith(product, parameter, present), product);
    EXPECT_EQ(wanted.value, value) << parameter.code() << ' ' << change;
    EXPECT_EQ(wanted.error.value_or(""), error) << parameter.code() << ' ' << change;
  }
}

TEST_F(WantedValueOf, AChangeNeedsTheParameterOnTheMenu) {
  const auto product = FanatecProduct::lookup(0x0020).value();
  const WantedValue wanted =
      wantedValue({P::driftMode, 1, true}, menuWith(product, P::forceFeedback, 65), product);
  EXPECT_EQ(wanted.value, std::nullopt);
  EXPECT_EQ(wanted.error, "DRI is not available on CSL DD / GT DD Pro / ClubSport DD");
}

TEST_F(WantedValueOf, AValueIsItself) {
  const auto product = FanatecProduct::lookup(0x0020).value();
  EXPECT_EQ(
      wantedValue({P::forceFeedback, 300, false}, menuWith(product, P::forceFeedback, 65), product)
          .value,
      300);
}

}  // namespace
}  // namespace quorvane
