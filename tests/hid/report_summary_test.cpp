#include "hid/report_summary.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace quorvane::report_summary_test {
namespace {

using Kind = HIDReportSummary::Kind;

TEST(HIDReportSummaryKind, HasAText) {
  EXPECT_EQ(rawValue(Kind::input), "input");
  EXPECT_EQ(rawValue(Kind::output), "output");
  EXPECT_EQ(rawValue(Kind::feature), "feature");
  EXPECT_LT(Kind::input, Kind::output);
  EXPECT_LT(Kind::output, Kind::feature);
}

TEST(HIDReportSummaryKind, ComesFromExactlyItsText) {
  EXPECT_EQ(reportKind("input"), Kind::input);
  EXPECT_EQ(reportKind("output"), Kind::output);
  EXPECT_EQ(reportKind("feature"), Kind::feature);
  for (const std::string_view text : {"", "Input", "OUTPUT", "features", "in", "input "}) {
    EXPECT_EQ(reportKind(text), std::nullopt) << text;
  }
}

TEST(HIDReportSummary, IsEqualFieldByField) {
  const HIDReportSummary summary{Kind::input, 1, 7, 2, {1, 9}};
  EXPECT_EQ(summary, (HIDReportSummary{Kind::input, 1, 7, 2, {1, 9}}));
  EXPECT_NE(summary, (HIDReportSummary{Kind::output, 1, 7, 2, {1, 9}}));
  EXPECT_NE(summary, (HIDReportSummary{Kind::input, 2, 7, 2, {1, 9}}));
  EXPECT_NE(summary, (HIDReportSummary{Kind::input, 1, 8, 2, {1, 9}}));
  EXPECT_NE(summary, (HIDReportSummary{Kind::input, 1, 7, 3, {1, 9}}));
  EXPECT_NE(summary, (HIDReportSummary{Kind::input, 1, 7, 2, {1}}));
}

TEST(HIDReportTally, IsEmptyAtFirst) { EXPECT_TRUE(HIDReportTally().takeSummaries().empty()); }

TEST(HIDReportTally, RoundsBitsUpToBytes) {
  for (std::int64_t bits = 0; bits <= 70; ++bits) {
    HIDReportTally tally;
    tally.add(Kind::input, 0, bits, 1, 1);
    const std::int64_t bytes = bits / 8 + (bits % 8 == 0 ? 0 : 1);
    EXPECT_EQ(tally.takeSummaries(),
              (std::vector<HIDReportSummary>{{Kind::input, 0, bytes, 1, {1}}}));
  }
}

TEST(HIDReportTally, StartsOverOnceTaken) {
  HIDReportTally tally;
  tally.add(Kind::input, 1, 8, 1, 1);
  tally.takeSummaries();
  EXPECT_TRUE(tally.takeSummaries().empty());
}

TEST(HIDReportTally, AddsUpWhatBelongsToOneReport) {
  HIDReportTally tally;
  tally.add(Kind::output, 1, 4, 1, 0xFF00);
  tally.add(Kind::output, 1, 4, 1, 9);
  tally.add(Kind::output, 1, 1, 1, 9);
  tally.add(Kind::output, 1, 8, 0, 1);
  EXPECT_EQ(tally.takeSummaries(),
            (std::vector<HIDReportSummary>{{Kind::output, 1, 2, 4, {1, 9, 0xFF00}}}));
}

TEST(HIDReportTally, SortsByTheKindsTextThenByReportID) {
  const std::vector<std::pair<Kind, std::int64_t>> wanted{
      {Kind::feature, 0}, {Kind::feature, 3}, {Kind::feature, 255}, {Kind::input, 0},
      {Kind::input, 1},   {Kind::input, 16},  {Kind::output, 1},    {Kind::output, 300}};
  for (std::size_t shift = 0; shift < wanted.size(); ++shift) {
    HIDReportTally tally;
    for (std::size_t i = 0; i < wanted.size(); ++i) {
      const auto& [kind, id] = wanted[(i * 3 + shift) % wanted.size()];
      tally.add(kind, id, 8, 1, 1);
    }
    std::vector<std::pair<Kind, std::int64_t>> got;
    for (const auto& summary : tally.takeSummaries())
      got.emplace_back(summary.kind, summary.reportID);
    EXPECT_EQ(got, wanted);
  }
}

TEST(HIDReportTally, HoldsTheLargestReportsOfADescriptor) {
  HIDReportTally tally;
  tally.add(Kind::input, 0, 0xFFFFFFFF, 0x7FFFFFFF, 1);
  EXPECT_EQ(tally.takeSummaries().front().byteLength, 1152921503801540609);
}

constexpr const char* overflow = "^quorvane: internal fault: the bits of a report overflow\n$";

TEST(HIDReportTallyDeathTest, AnOverflowingElementStopsTheProgram) {
  HIDReportTally tally;
  EXPECT_DEATH(tally.add(Kind::input, 0, 0xFFFFFFFF, 0xFFFFFFFF, 1), overflow);
}

TEST(HIDReportTallyDeathTest, AnOverflowingTotalStopsTheProgram) {
  HIDReportTally tally;
  for (int i = 0; i < 2; ++i) tally.add(Kind::input, 0, 0x40000000, 0xFFFFFFFF, 1);
  EXPECT_DEATH(tally.add(Kind::input, 0, 0x40000000, 0x10, 1), overflow);
}

TEST(HIDReportTallyDeathTest, ATotalThatCannotBeRoundedUpStopsTheProgram) {
  HIDReportTally tally;
  tally.add(Kind::input, 0, std::numeric_limits<std::int64_t>::max(), 1, 1);
  EXPECT_DEATH(tally.takeSummaries(), overflow);
}

}  // namespace
}  // namespace quorvane::report_summary_test
