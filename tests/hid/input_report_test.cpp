#include "hid/input_report.h"

#include <gtest/gtest.h>

#include <chrono>

namespace quorvane::input_report_test {
namespace {

TEST(HIDInputReport, DumpsItsBytes) {
  EXPECT_EQ((HIDInputReport{0xFF, {0xFF, 0x03, 0x02}, {}}).hexDump(), "ff 03 02");
  EXPECT_EQ((HIDInputReport{0x00, {}, {}}).hexDump(), "");
}

TEST(HIDElementValue, IsEqualFieldByField) {
  const WallClock::time_point now{std::chrono::seconds(1)};
  const HIDElementValue value{1, 2, 3, 4, 5, 6, now};
  EXPECT_EQ(value, (HIDElementValue{1, 2, 3, 4, 5, 6, now}));
  EXPECT_NE(value, (HIDElementValue{0, 2, 3, 4, 5, 6, now}));
  EXPECT_NE(value, (HIDElementValue{1, 0, 3, 4, 5, 6, now}));
  EXPECT_NE(value, (HIDElementValue{1, 2, 0, 4, 5, 6, now}));
  EXPECT_NE(value, (HIDElementValue{1, 2, 3, 0, 5, 6, now}));
  EXPECT_NE(value, (HIDElementValue{1, 2, 3, 4, 0, 6, now}));
  EXPECT_NE(value, (HIDElementValue{1, 2, 3, 4, 5, 0, now}));
  EXPECT_NE(value, (HIDElementValue{1, 2, 3, 4, 5, 6, {}}));
}

}  // namespace
}  // namespace quorvane::input_report_test
