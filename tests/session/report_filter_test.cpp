#include "session/report_filter.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quorvane {
namespace {

Bytes reportOf(std::size_t length, std::uint8_t reportID, std::uint8_t subID) {
  Bytes report(length);
  report[0] = reportID;
  report[1] = subID;
  return report;
}

Bytes statusOf(std::uint8_t wheel, std::uint8_t firmware, std::uint8_t axis = 0) {
  Bytes report(WheelStatus::length);
  report[0] = WheelStatus::reportID;
  report[5] = axis;
  report[WheelStatus::wheelOffset] = wheel;
  report[WheelStatus::firmwareOffset] = firmware;
  return report;
}

TEST(ReportFilter, AnswersAreNewsEachTime) {
  ReportFilter news;
  for (const auto subID : {IdentityReport::subID, TuningSnapshot::subID}) {
    const Bytes report = reportOf(64, 0xFF, subID);
    EXPECT_TRUE(news.pass(report));
    EXPECT_TRUE(news.pass(report));
  }
}

TEST(ReportFilter, DecodesWhatPasses) {
  ReportFilter news;
  const Bytes identity = reportOf(64, 0xFF, IdentityReport::subID);
  const Bytes tuning = reportOf(64, 0xFF, TuningSnapshot::subID);
  EXPECT_EQ(std::get<IdentityReport>(news.pass(identity).value()).raw(), identity);
  EXPECT_EQ(std::get<TuningSnapshot>(news.pass(tuning).value()).raw(), tuning);
  EXPECT_EQ(std::get<WheelStatus>(news.pass(statusOf(1, 2)).value()), (WheelStatus{1, 2}));
}

TEST(ReportFilter, OtherReportsAreNone) {
  ReportFilter news;
  const std::vector<Bytes> cases{
      {},
      {0x01},
      {0xFF},
      reportOf(64, 0xFF, 0x01),
      reportOf(64, 0x01, 0x03),
      reportOf(63, 0xFF, 0x03),
      reportOf(65, 0xFF, 0x08),
      reportOf(33, 0x01, 0),
      reportOf(35, 0x01, 0),
      reportOf(34, 0x02, 0),
  };
  for (const Bytes& report : cases) EXPECT_FALSE(news.pass(report)) << hexDump(report);
}

TEST(ReportFilter, AStatusIsNewsWhenItsWheelOrFirmwareDiffersFromTheLast) {
  struct Case {
    Bytes status;
    bool passes;
  };
  const std::vector<Case> cases{
      {statusOf(1, 1), true},  {statusOf(1, 1), false}, {statusOf(1, 1, 9), false},
      {statusOf(1, 2), true},  {statusOf(2, 2), true},  {statusOf(WheelStatus::noWheel, 3), false},
      {statusOf(2, 2), false}, {statusOf(1, 1), true},
  };
  ReportFilter news;
  for (const auto& [status, passes] : cases) {
    EXPECT_EQ(news.pass(status).has_value(), passes) << hexDump(status);
    EXPECT_FALSE(news.pass(reportOf(64, 0xFF, 0x01)));
  }
}

}  // namespace
}  // namespace quorvane
