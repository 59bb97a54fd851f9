#include "hid/reading_pace.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "support/thread.h"

namespace quorvane::reading_pace_test {
namespace {

constexpr int promptReports = ReadingPace::promptReports;

// Takes reports of no interest, as the reader does. Returns how many were read promptly.
int promptAmong(ReadingPace& pace, int reports) {
  int prompt = 0;
  for (int i = 0; i < reports; ++i) {
    if (!pace.mayGather()) ++prompt;
    pace.took(false);
  }
  return prompt;
}

// A pace whose reader may read in batches.
struct RelaxedPace : ReadingPace {
  RelaxedPace() {
    promptAmong(*this, promptReports);
    EXPECT_TRUE(mayGather());
  }
};

TEST(ReadingPace, TheFirstReportsAreTakenAsTheyArrive) {
  ReadingPace pace;
  EXPECT_EQ(promptAmong(pace, 10 * promptReports), promptReports);
}

TEST(ReadingPace, AnOpeningBeginsPrompt) {
  RelaxedPace pace;
  pace.restart();
  EXPECT_EQ(promptAmong(pace, 10 * promptReports), promptReports);
}

TEST(ReadingPace, IsPromptForAWhileAfterEachOfThese) {
  struct Case {
    std::string name;
    std::function<void(ReadingPace&)> event;
  };
  const std::vector<Case> cases{
      {"a report of interest", [](ReadingPace& pace) { pace.took(true); }},
      {"a hold that has ended",
       [](ReadingPace& pace) {
         EXPECT_TRUE(pace.hold());
         pace.release();
       }},
      {"several of both",
       [](ReadingPace& pace) {
         pace.took(true);
         EXPECT_TRUE(pace.hold());
         EXPECT_TRUE(pace.hold());
         pace.release();
         pace.release();
         pace.took(true);
       }},
  };
  for (const auto& [name, event] : cases) {
    RelaxedPace pace;
    event(pace);
    EXPECT_EQ(promptAmong(pace, 10 * promptReports), promptReports) << name;
  }
}

TEST(ReadingPace, TheWhileBeginsAnew) {
  RelaxedPace pace;
  pace.took(true);
  EXPECT_EQ(promptAmong(pace, promptReports - 1), promptReports - 1);
  pace.took(true);
  EXPECT_EQ(promptAmong(pace, 10 * promptReports), promptReports);
}

TEST(ReadingPace, IsPromptAsLongAsAnybodyHoldsIt) {
  RelaxedPace pace;
  EXPECT_TRUE(pace.hold());
  EXPECT_EQ(promptAmong(pace, 3 * promptReports), 3 * promptReports);
  EXPECT_FALSE(pace.hold());
  pace.release();
  EXPECT_EQ(promptAmong(pace, 3 * promptReports), 3 * promptReports);
  pace.release();
  EXPECT_TRUE(pace.mayGather());
}

TEST(ReadingPace, OnlyAReaderThatMayBeGatheringIsToHurry) {
  ReadingPace pace;
  EXPECT_FALSE(pace.hold());
  pace.release();
  promptAmong(pace, promptReports + 1);
  EXPECT_TRUE(pace.mayGather());
  EXPECT_TRUE(pace.hold());
  EXPECT_TRUE(pace.hold());
  EXPECT_FALSE(pace.mayGather());
  EXPECT_FALSE(pace.hold());
}

// A hold() that races with mayGather(): either the reader sees it, or hold() asks for a hurry().
TEST(ReadingPace, NoHoldIsOverlookedByAReaderThatBeginsToGather) {
  constexpr int rounds = 200;
  for (int round = 0; round < rounds; ++round) {
    ReadingPace pace;
    promptAmong(pace, promptReports);
    bool hurry = false;
    bool gathers = false;
    {
      const Thread holder("holder", [&] { hurry = pace.hold(); });
      gathers = pace.mayGather();
    }
    EXPECT_TRUE(hurry || !gathers);
    EXPECT_FALSE(pace.mayGather());
  }
}

}  // namespace
}  // namespace quorvane::reading_pace_test
