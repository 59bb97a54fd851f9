#include "protocol/report_packet.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quorvane::report_packet_test {
namespace {

TEST(HIDReportPacket, PutsItsReportIDFirstUnlessItIsZero) {
  struct Case {
    HIDReportPacket packet;
    Bytes wire;
    std::string dump;
  };
  const std::vector<Case> cases{
      {{0x00, {0x01, 0x02}}, {0x01, 0x02}, "01 02"},
      {{0xFF, {0x01, 0x02}}, {0xFF, 0x01, 0x02}, "ff 01 02"},
      {{0x01, {0x00, 0x02}}, {0x01, 0x00, 0x02}, "01 00 02"},
      {{0xFF, {0x03, 0x02}}, {0xFF, 0x03, 0x02}, "ff 03 02"},
      {{0x05, {}}, {0x05}, "05"},
      {{0x00, {}}, {}, ""},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(c.packet.wireBytes(), c.wire);
    EXPECT_EQ(c.packet.hexDump(), c.dump);
  }
}

TEST(HIDReportPacket, EveryOtherReportIDIsSent) {
  for (unsigned id = 1; id <= 0xFF; ++id) {
    const auto reportID = static_cast<std::uint8_t>(id);
    EXPECT_EQ((HIDReportPacket{reportID, {0xAA}}).wireBytes(), (Bytes{reportID, 0xAA}));
  }
}

TEST(HIDReportPacket, IsEqualFieldByField) {
  const HIDReportPacket packet{0x01, {0x02, 0x03}};
  EXPECT_EQ(packet, (HIDReportPacket{0x01, {0x02, 0x03}}));
  EXPECT_NE(packet, (HIDReportPacket{0x00, {0x02, 0x03}}));
  EXPECT_NE(packet, (HIDReportPacket{0x01, {0x02, 0x04}}));
  EXPECT_NE(packet, (HIDReportPacket{0x01, {0x02}}));
  // The same bytes on the wire, but another packet.
  EXPECT_NE((HIDReportPacket{0x00, {0x01, 0x02}}), (HIDReportPacket{0x01, {0x02}}));
}

}  // namespace
}  // namespace quorvane::report_packet_test
