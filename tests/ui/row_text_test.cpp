#include "ui/tuning/row_text.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "protocol/menu_text.h"
#include "protocol/setting.h"
#include "tests/ui/products.h"

namespace quorvane {
namespace {

using enum TuningParameter::Case;

std::string shown(TuningParameter parameter, std::int64_t value,
                  const std::optional<FanatecProduct>& product = directDrive) {
  return format({parameter, value, {}, product}, value);
}

TEST(RowText, ShowsEveryKindOfValue) {
  EXPECT_EQ(shown(sensitivity, 900, classic), "900 deg");
  EXPECT_EQ(shown(sensitivity, 900), "900 deg");
  EXPECT_EQ(shown(sensitivity, 2530), "AUT");
  EXPECT_EQ(shown(sensitivity, 0), "AUT");
  EXPECT_EQ(shown(sensitivity, 0, std::nullopt), "AUT");
  EXPECT_EQ(shown(forceFeedback, 80), "80 %");
  EXPECT_EQ(shown(brakeLevelIndicator, 101), "OFF");
  EXPECT_EQ(shown(brakeLevelIndicator, 100), "100 %");
  EXPECT_EQ(shown(forceFeedbackScaling, 0), "LIN");
  EXPECT_EQ(shown(forceFeedbackScaling, 1), "PEA");
  EXPECT_EQ(shown(analogPaddles, 1), "CbP");
  EXPECT_EQ(shown(interpolation, 11), "11");
  EXPECT_EQ(shown(driftMode, -3, cslElite), "-3");
  EXPECT_EQ(shown(slot, 3), "3");
  EXPECT_EQ(shown(naturalInertia, 5), "5 %");
}

TEST(RowText, AWordIsTheFirstOfTheLabelForEveryValueThatHasOne) {
  for (const FanatecProduct& product : FanatecProduct::all()) {
    if (!product.hasTuningMenu()) continue;
    for (const TuningParameter parameter : TuningParameter::available(product)) {
      const ClosedRange range = parameter.allowedRange(product);
      for (std::int64_t value = range.lower; value <= range.upper; ++value) {
        const auto label = parameter.label(value, product);
        if (!label) continue;
        const std::string word = shown(parameter, value, product);
        EXPECT_EQ(word.find(' '), std::string::npos) << word;
        EXPECT_TRUE(label->starts_with(word)) << *label;
      }
    }
  }
}

TEST(RowText, TheAngleIsAutomaticWhenItIsTheProductsOwnOrNone) {
  const auto isAuto = [](std::int64_t current, std::optional<std::int64_t> staged,
                         const std::optional<FanatecProduct>& product) {
    return RowState{sensitivity, current, staged, product}.isAuto();
  };
  EXPECT_TRUE(isAuto(2530, {}, directDrive));
  EXPECT_TRUE(isAuto(900, 0, directDrive));
  EXPECT_TRUE(isAuto(1090, {}, cslElite));
  EXPECT_FALSE(isAuto(2530, 900, directDrive));
  EXPECT_FALSE(isAuto(900, {}, directDrive));
  EXPECT_FALSE(isAuto(0, {}, std::nullopt));
  EXPECT_FALSE((RowState{forceFeedback, 0, {}, directDrive}.isAuto()));
}

TEST(RowText, ASwitchThatIsTurnedOffLandsOnAnOrdinaryValue) {
  const auto landing = [](TuningParameter parameter, std::int64_t current,
                          std::optional<std::int64_t> last) {
    return ordinaryValue({parameter, current, settingOf(parameter).special->value, directDrive},
                         settingOf(parameter).special->value, last);
  };
  EXPECT_EQ(landing(sensitivity, 900, 540), 900);
  EXPECT_EQ(landing(sensitivity, 2530, 540), 540);
  EXPECT_EQ(landing(sensitivity, 2530, {}), 2520);
  EXPECT_EQ(landing(brakeLevelIndicator, 60, {}), 60);
  EXPECT_EQ(landing(brakeLevelIndicator, 101, 75), 75);
  EXPECT_EQ(landing(brakeLevelIndicator, 101, {}), 100);
}

TEST(RowText, SaysWhatAScreenReaderNeeds) {
  EXPECT_EQ(spokenName({forceFeedback, 65, 80, directDrive}),
            "Force feedback strength, 80 %, was 65 %");
  EXPECT_EQ(spokenName({vibration, 100, {}, directDrive}), "Wheel vibration motor, 100 %");
  EXPECT_EQ(spokenName({forceFeedbackScaling, 0, 1, directDrive}),
            "Force feedback scaling, PEA, was LIN");
  EXPECT_EQ(MenuText::range(forceEffect, directDrive), "0 to 120 %, step 10");
  EXPECT_EQ(MenuText::range(sensitivity, directDrive), "90 to 2520 deg, step 10");
  EXPECT_EQ(MenuText::range(interpolation, directDrive), "0 to 20, step 1");
  EXPECT_EQ(MenuText::range(brakeLevelIndicator, directDrive), "0 to 100 %, step 1");
}

}  // namespace
}  // namespace quorvane
