#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/app/model_fixture.h"

namespace quorvane {
namespace {

using P = TuningParameter;

class ModelStaging : public ModelTest {
 protected:
  // A preset with the menu's current values.
  TuningPreset currentValues(const std::string& name) {
    return TuningPreset::capture(model().product(), name, model().tuning().value());
  }
};

TEST_F(ModelStaging, AnEditIsStagedWhileItDiffersFromTheMenu) {
  start();
  model().stage(P::forceFeedback, 80);
  EXPECT_EQ(staged(), "FF=80");
  model().stage(P::forceFeedback, 81);
  EXPECT_EQ(staged(), "FF=81");
  model().stage(P::sensitivity, 800);
  EXPECT_EQ(staged(), "SEN=800 FF=81");
  model().stage(P::forceFeedback, 65);
  EXPECT_EQ(staged(), "SEN=800");
  model().stage(P::forceFeedback, 65);
  EXPECT_EQ(staged(), "SEN=800");
  EXPECT_EQ(takeLog(), Lines{});
  EXPECT_EQ(takeTranscript(), Lines{});
}

TEST_F(ModelStaging, EveryEditIsToldOnce) {
  start();
  changes_ = 0;
  model().stage(P::forceFeedback, 80);
  EXPECT_EQ(changes_, 1);
  model().stage(P::forceFeedback, 65);
  EXPECT_EQ(changes_, 2);
  model().stage(P::forceFeedback, 65);
  model().revert(P::forceFeedback);
  EXPECT_EQ(changes_, 2);
}

TEST_F(ModelStaging, WithoutAMenuEveryEditIsStaged) {
  startWithoutBase();
  model().stage(P::forceFeedback, 65);
  model().stage(P::sensitivity, 0);
  EXPECT_EQ(staged(), "SEN=0 FF=65");
}

TEST_F(ModelStaging, AValueTurnedAtTheWheelIsTheCurrentOne) {
  start();
  base().turn(P::forceFeedback, 42);
  settle();
  model().stage(P::forceFeedback, 65);
  EXPECT_EQ(staged(), "FF=65");
  model().stage(P::forceFeedback, 42);
  EXPECT_EQ(staged(), "");
}

TEST_F(ModelStaging, ARevertTakesOneEditBackSilently) {
  start();
  model().stage(P::forceFeedback, 80);
  model().stage(P::sensitivity, 800);
  model().revert(P::forceFeedback);
  EXPECT_EQ(staged(), "SEN=800");
  model().revert(P::forceFeedback);
  model().revert(P::naturalInertia);
  EXPECT_EQ(staged(), "SEN=800");
  EXPECT_EQ(takeLog(), Lines{});
}

TEST_F(ModelStaging, DiscardingTellsHowManyWereDropped) {
  start();
  model().discardStaged();
  EXPECT_EQ(takeLog(), Lines{});
  model().stage(P::forceFeedback, 80);
  model().discardStaged();
  EXPECT_EQ(takeLog(), (Lines{"[log] Discarded 1 unsaved change"}));
  model().stage(P::forceFeedback, 80);
  model().stage(P::sensitivity, 800);
  model().discardStaged();
  EXPECT_EQ(takeLog(), (Lines{"[log] Discarded 2 unsaved changes"}));
  EXPECT_EQ(staged(), "");
  model().discardStaged();
  EXPECT_EQ(takeLog(), Lines{});
}

TEST_F(ModelStaging, APresetStagesWhatDiffersFromTheMenu) {
  start();
  model().stagePreset(presetOf("Wet", {{P::slot, 5},
                                       {P::sensitivity, 900},
                                       {P::forceFeedback, 80},
                                       {P::driftMode, 2},
                                       {P::naturalInertia, 9}}));
  EXPECT_EQ(staged(), "FF=80 NIN=9");
  EXPECT_EQ(takeLog(), (Lines{"[log] Loaded \"Wet\": 2 values to save"}));
  EXPECT_EQ(takeTranscript(), Lines{});
}

TEST_F(ModelStaging, APresetCountsWhatWasStagedBefore) {
  start();
  model().stage(P::sensitivity, 800);
  model().stage(P::naturalInertia, 9);
  model().stagePreset(presetOf("Wet", {{P::forceFeedback, 80}, {P::naturalInertia, 5}}));
  EXPECT_EQ(staged(), "SEN=800 FF=80");
  EXPECT_EQ(takeLog(), (Lines{"[log] Loaded \"Wet\": 2 values to save"}));
}

TEST_F(ModelStaging, APresetThatIsTheMenuStagesNothing) {
  start();
  model().stagePreset(currentValues("Dry"));
  EXPECT_EQ(staged(), "");
  EXPECT_EQ(takeLog(), (Lines{"[log] \"Dry\" matches the current values"}));
}

TEST_F(ModelStaging, APresetOfOneOtherValueIsCountedInTheSingular) {
  start();
  TuningPreset preset = currentValues("Dry");
  preset.values["FF"] = 66;
  model().stagePreset(preset);
  EXPECT_EQ(takeLog(), (Lines{"[log] Loaded \"Dry\": 1 value to save"}));
}

TEST_F(ModelStaging, APresetWithoutABaseStagesAllOfItButTheSlot) {
  startWithoutBase();
  model().stagePreset(
      presetOf("Wet", {{P::slot, 5}, {P::driftMode, 2}, {P::fullForce, 9}, {P::sensitivity, 0}}));
  EXPECT_EQ(staged(), "SEN=0 DRI=2 FUL=9");
  EXPECT_EQ(takeLog(), (Lines{"[log] Loaded \"Wet\": 3 values to save"}));
}

TEST_F(ModelStaging, ABuiltInPresetMatchesABaseThatWasResetToIt) {
  simulate([](SimulatedBase& simulated) { simulated.menu().reset(); });
  start();
  model().stagePreset(TuningPreset::builtIn().front());
  EXPECT_EQ(takeLog(), (Lines{"[log] \"Fanatec factory defaults\" matches the current values"}));
}

// One test for each product that has a menu.
class ModelStagingOfProduct : public ModelTest, public testing::WithParamInterface<FanatecProduct> {
 protected:
  void SetUp() override { attach(GetParam().productID); }
};

TEST_P(ModelStagingOfProduct, SensitivityZeroIsStagedUnlessTheAutomaticAngleIsInForce) {
  const std::int64_t automatic = GetParam().autoRotation;
  simulate([](SimulatedBase& simulated) { simulated.menu().put(P::sensitivity, 540); });
  start();
  model().stage(P::sensitivity, 0);
  EXPECT_EQ(staged(), "SEN=0");
  model().stage(P::sensitivity, 540);
  EXPECT_EQ(staged(), "");
  if (automatic == 0) return;

  base().turn(P::sensitivity, automatic);
  settle();
  model().stage(P::sensitivity, 540);
  EXPECT_EQ(staged(), "SEN=540");
  model().stage(P::sensitivity, 0);
  EXPECT_EQ(staged(), "");
  model().stage(P::sensitivity, automatic);
  EXPECT_EQ(staged(), "");
}

TEST_P(ModelStagingOfProduct, EveryValueIsStagedUnlessItIsTheCurrentOne) {
  start();
  for (const P parameter : P::available(GetParam())) {
    const std::int64_t current = valueOf(parameter);
    const ClosedRange range = parameter.allowedRange(GetParam());
    for (std::int64_t value = range.lower; value <= range.upper; value += parameter.step()) {
      model().stage(parameter, value);
      ASSERT_EQ(model().staged().size(), value == current ? 0U : 1U)
          << parameter.code() << " " << value;
    }
    model().discardStaged();
  }
}

std::vector<FanatecProduct> productsWithAMenu() {
  std::vector<FanatecProduct> products;
  for (const FanatecProduct& product : FanatecProduct::all()) {
    if (product.hasTuningMenu()) products.push_back(product);
  }
  return products;
}

INSTANTIATE_TEST_SUITE_P(Products, ModelStagingOfProduct, testing::ValuesIn(productsWithAMenu()),
                         [](const auto& test) {
                           return "With" + std::to_string(test.param.productID);
                         });

TEST_F(ModelStaging, EditsAreTakenBackOneByOne) {
  start();
  model().stage(P::forceFeedback, 70);
  model().stage(P::forceFeedback, 71);
  model().stage(P::forceFeedback, 72);
  model().stage(P::vibration, 50);
  model().stage(P::forceFeedback, 80);
  model().stagePreset(presetOf("Test", {{P::vibration, 10}, {P::naturalInertia, 9}}));
  model().revert(P::forceFeedback);
  for (const char* const left :
       {"FF=80 SHO=10 NIN=9", "FF=80 SHO=50", "FF=72 SHO=50", "FF=72", ""}) {
    model().takeBackEdit();
    EXPECT_EQ(staged(), left);
  }
  model().takeBackEdit();
  EXPECT_EQ(staged(), "");
}

TEST_F(ModelStaging, WhatTheBaseHasMeanwhileIsNotStagedAgain) {
  start();
  model().stage(P::forceFeedback, 80);
  model().stage(P::vibration, 50);
  model().stage(P::naturalInertia, 9);
  base().turn(P::vibration, 50);
  settle();
  model().takeBackEdit();
  EXPECT_EQ(staged(), "FF=80");
}

TEST_F(ModelStaging, WhatASaveLeftIsTakenBackFromTheEndOfTheMenu) {
  start();
  behave([](SimulatedBehaviour& b) { b.ignored = {P::sensitivity, P::forceFeedback}; });
  model().stage(P::forceFeedback, 80);
  model().stage(P::sensitivity, 800);
  model().saveStaged();
  settle();
  model().takeBackEdit();
  EXPECT_EQ(staged(), "SEN=800");
  model().takeBackEdit();
  EXPECT_EQ(staged(), "");
}

}  // namespace
}  // namespace quorvane
