#include <gtest/gtest.h>

#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "protocol/error.h"
#include "tests/error_text.h"
#include "tests/session/simulated_session.h"

namespace quorvane {

std::ostream& operator<<(std::ostream& stream, const WheelBase::ApplyResult& result) {
  return stream << result.parameter.code() << "=" << result.value << " "
                << result.error.value_or("taken");
}

namespace {

using Results = std::vector<WheelBase::ApplyResult>;
using enum TuningParameter::Case;

constexpr const char* commitPause = "pause 250 ms";
constexpr std::int64_t cslElite = 0x0E03;

TuningPreset presetOf(const std::vector<ParameterValue>& values) {
  TuningPreset preset;
  preset.values = TuningPreset::codeValues(values);
  return preset;
}

class WheelBaseApply : public SimulatedSessionTest {
 protected:
  void SetUp() override { connectAndRead(); }

  Lines writesOf(const Lines& transcript) {
    Lines writes;
    for (const std::string& line : transcript) {
      if (line.starts_with("> ff 03 00")) writes.push_back(line);
    }
    return writes;
  }
};

TEST_F(WheelBaseApply, WritesEveryValueInMenuOrderWithItsReadBack) {
  const Results results =
      base->apply(presetOf({{naturalInertia, 7}, {sensitivity, 540}, {forceFeedback, 80}}));
  EXPECT_EQ(results,
            (Results{{sensitivity, 540, {}}, {forceFeedback, 80, {}}, {naturalInertia, 7, {}}}));
  const Lines transcript = takeTranscript();
  ASSERT_EQ(transcript.size(), 9U);
  for (const std::size_t write : {0U, 3U, 6U}) {
    EXPECT_TRUE(transcript[write].starts_with("> ff 03 00 02 ")) << transcript[write];
    EXPECT_EQ(transcript[write + 1], commitPause);
    EXPECT_EQ(transcript[write + 2], menuRequest);
  }
}

TEST_F(WheelBaseApply, AnEmptyPresetSendsNothing) {
  EXPECT_EQ(base->apply(TuningPreset{}), Results{});
  EXPECT_EQ(takeTranscript(), Lines{});
}

TEST_F(WheelBaseApply, ASetsNumberIsLeftOutWithoutAResult) {
  EXPECT_EQ(base->apply(presetOf({{slot, 4}, {forceFeedback, 80}})),
            (Results{{forceFeedback, 80, {}}}));
  EXPECT_EQ(base->tuning()->slot(), 2);
}

TEST_F(WheelBaseApply, ACodeThatIsNoParameterIsLeftOutWithoutAResult) {
  TuningPreset preset;
  preset.values = {{"ff", 10}, {"XYZ", 1}, {"FF", 80}};
  EXPECT_EQ(base->apply(preset), (Results{{forceFeedback, 80, {}}}));
}

TEST_F(WheelBaseApply, AValueThatTheBaseIgnoresNamesWhatWasReadBackAndTheRestGoesOn) {
  behave([](SimulatedBehaviour& b) { b.ignored = {forceFeedback, damperEffect}; });
  const Results results =
      base->apply(presetOf({{forceFeedback, 80}, {damperEffect, 30}, {naturalInertia, 9}}));
  EXPECT_EQ(results,
            (Results{{forceFeedback, 80, "The base ignored the FF write; it still reports 65"},
                     {damperEffect, 30, "The base ignored the DPR write; it still reports 50"},
                     {naturalInertia, 9, {}}}));
}

TEST_F(WheelBaseApply, AValueOutOfRangeIsNotSentAndTheRestGoesOn) {
  const Results results = base->apply(presetOf({{forceFeedback, 101}, {naturalInertia, 9}}));
  ASSERT_EQ(results.size(), 2U);
  EXPECT_EQ(results[0].error,
            errorText([&] { TuningParameter(forceFeedback).encode(101, base->product()); }));
  EXPECT_EQ(results[1], (WheelBase::ApplyResult{naturalInertia, 9, {}}));
  EXPECT_EQ(writesOf(takeTranscript()).size(), 1U);
}

TEST_F(WheelBaseApply, ABaseThatIsGoneFailsEveryValue) {
  device->unplug();
  const Results results = base->apply(presetOf({{forceFeedback, 80}, {naturalInertia, 9}}));
  ASSERT_EQ(results.size(), 2U);
  for (const auto& result : results) {
    EXPECT_EQ(result.error, "HID I/O failed: SetReport id 0xFF -> device not found");
  }
}

TEST_F(WheelBaseApply, EachResultIsToldAsItComes) {
  behave([](SimulatedBehaviour& b) { b.ignored = {forceFeedback}; });
  Results told;
  std::vector<std::size_t> linesBefore;
  const Results results = base->apply(presetOf({{forceFeedback, 80}, {naturalInertia, 9}}),
                                      [&](const WheelBase::ApplyResult& result) {
                                        told.push_back(result);
                                        linesBefore.push_back(device->transcript().lines().size());
                                      });
  EXPECT_EQ(told, results);
  EXPECT_EQ(linesBefore, (std::vector<std::size_t>{3, 6}));
}

TEST_F(WheelBaseApply, TheCatalogueAppliesWholeWhateverTheBaseHolds) {
  for (const TuningPreset& preset : TuningPreset::builtIn()) {
    SCOPED_TRACE(preset.name);
    const Results results = base->apply(preset);
    EXPECT_EQ(results.size(), preset.values.size());
    for (const auto& result : results) EXPECT_EQ(result.error, std::nullopt) << result;
  }
}

TEST(WheelBaseApplyWithoutAMenu, FailsEveryValueAndSendsNothing) {
  SimulatedSession session;
  session.connect();
  const Results results = session.base->apply(presetOf({{forceFeedback, 80}}));
  EXPECT_EQ(
      results,
      (Results{{forceFeedback, 80, errorText([] { throw FanatecError::noTuningSnapshot(); })}}));
  EXPECT_EQ(session.takeTranscript(), Lines{});
}

TEST(WheelBaseApplyOnAnotherProduct, WhatItsMenuLacksIsLeftOutWithoutAResult) {
  SimulatedSession session(cslElite);
  session.connectAndRead();
  const TuningPreset everything =
      TuningPreset::capture(std::nullopt, "all", *session.base->tuning());
  std::vector<TuningParameter> applied;
  for (const auto& result : session.base->apply(everything)) applied.push_back(result.parameter);
  std::vector<TuningParameter> expected = TuningParameter::available(session.base->product());
  std::erase(expected, TuningParameter(slot));
  EXPECT_EQ(applied, expected);
  EXPECT_LT(applied.size(), everything.values.size());
}

}  // namespace
}  // namespace quorvane
