#include "protocol/wheel_status.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>

namespace quorvane::wheel_status_test {
namespace {

Bytes report(std::uint8_t wheelLow, std::uint8_t wheelHigh, std::uint8_t firmwareLow,
             std::uint8_t firmwareHigh) {
  Bytes bytes(34, 0x77);
  bytes[0] = 0x01;
  bytes[30] = wheelLow;
  bytes[31] = wheelHigh;
  bytes[32] = firmwareLow;
  bytes[33] = firmwareHigh;
  return bytes;
}

TEST(WheelStatus, ReadsWheelAndFirmwareAsLittleEndianNumbers) {
  EXPECT_EQ(WheelStatus::fromReport(report(0x34, 0x12, 0x78, 0x56)), (WheelStatus{0x1234, 0x5678}));
  EXPECT_EQ(WheelStatus::fromReport(report(0x00, 0x00, 0x00, 0x00)), (WheelStatus{0, 0}));
  EXPECT_EQ(WheelStatus::fromReport(report(0xFE, 0xFF, 0xFF, 0xFF)), (WheelStatus{0xFFFE, 0xFFFF}));
}

TEST(WheelStatus, IsMadeOfExactlyThirtyFourBytes) {
  for (std::size_t length = 0; length <= 70; ++length) {
    Bytes bytes = report(0x34, 0x12, 0x78, 0x56);
    bytes.resize(length);
    EXPECT_EQ(WheelStatus::fromReport(bytes).has_value(), length == 34) << length;
  }
}

TEST(WheelStatus, BeginsWithItsReportID) {
  for (unsigned id = 0; id <= 0xFF; ++id) {
    Bytes bytes = report(0x34, 0x12, 0x78, 0x56);
    bytes[0] = static_cast<std::uint8_t>(id);
    EXPECT_EQ(WheelStatus::fromReport(bytes).has_value(), id == 0x01) << id;
  }
}

TEST(WheelStatus, CarriesNoWheelWhenItsFirstByteSaysSo) {
  for (unsigned low = 0; low <= 0xFF; ++low) {
    const auto status = WheelStatus::fromReport(report(static_cast<std::uint8_t>(low), 0, 1, 0));
    if (low == 0xFF) {
      EXPECT_EQ(status, std::nullopt);
    } else {
      EXPECT_EQ(status, (WheelStatus{static_cast<std::uint16_t>(low), 1}));
    }
  }
  EXPECT_EQ(WheelStatus::fromReport(report(0xFF, 0x12, 0x78, 0x56)), std::nullopt);
}

TEST(WheelStatus, IsEqualFieldByField) {
  EXPECT_EQ((WheelStatus{1, 2}), (WheelStatus{1, 2}));
  EXPECT_NE((WheelStatus{1, 2}), (WheelStatus{3, 2}));
  EXPECT_NE((WheelStatus{1, 2}), (WheelStatus{1, 3}));
}

}  // namespace
}  // namespace quorvane::wheel_status_test
