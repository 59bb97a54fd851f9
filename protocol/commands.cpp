#include "protocol/commands.h"

#include <algorithm>
#include <initializer_list>
#include <utility>

#include "support/invariant.h"

namespace quorvane {
namespace {

constexpr std::string_view inPlaceText = "linux";
constexpr std::string_view deviceIDText = "sdk";
constexpr std::uint8_t deviceIDByte = 0x00;
constexpr std::uint8_t setNumberMask = 0x0F;

std::uint8_t lowByte(std::int64_t value) { return static_cast<std::uint8_t>(value); }

// A packet of the tuning channel: the given bytes, truncated or zero-padded to 63.
HIDReportPacket tuningPacket(Bytes payload) {
  payload.resize(FanatecCommands::tuningPayloadLength);
  return {FanatecCommands::tuningReportID, std::move(payload)};
}

HIDReportPacket shortPacket(std::uint8_t reportID, std::initializer_list<std::uint8_t> payload) {
  invariant(payload.size() == FanatecCommands::shortPayloadLength,
            "a short command must have 7 bytes");
  return {reportID, payload};
}

// The 64 bytes of a write in the inPlace layout.
Bytes blockInPlace(ByteView report) {
  Bytes block(report.begin(), report.end());
  block[1] = FanatecCommands::tuningGroup;
  block[TuningSnapshot::statusOffset] = FanatecCommands::writeCommand;
  return block;
}

// The 64 bytes of a write in the deviceID layout. The block, status byte included, moves by one
// byte, so the report's last byte is dropped.
Bytes blockWithDeviceID(ByteView report, bool clearSetupFlag) {
  Bytes block{FanatecCommands::tuningReportID, FanatecCommands::tuningGroup, deviceIDByte};
  const ByteView menu =
      report.subspan(TuningSnapshot::statusOffset, TuningSnapshot::length - block.size());
  block.insert(block.end(), menu.begin(), menu.end());
  if (clearSetupFlag) block[TuningSnapshot::statusOffset + 1] &= setNumberMask;
  return block;
}

}  // namespace

std::string_view rawValue(TuningLayout layout) {
  return layout == TuningLayout::inPlace ? inPlaceText : deviceIDText;
}

std::optional<TuningLayout> tuningLayout(std::string_view rawValue) {
  if (rawValue == inPlaceText) return TuningLayout::inPlace;
  if (rawValue == deviceIDText) return TuningLayout::deviceID;
  return std::nullopt;
}

namespace FanatecCommands {

HIDReportPacket requestTuningSnapshot() { return tuningPacket({tuningGroup, requestCommand}); }

HIDReportPacket resetTuningToFactoryDefaults() { return tuningPacket({tuningGroup, resetCommand}); }

HIDReportPacket saveTuning(std::int64_t slot) {
  return tuningPacket({tuningGroup, saveCommand, lowByte(slot)});
}

HIDReportPacket selectTuningSlot(std::int64_t slot, TuningLayout layout) {
  if (layout == TuningLayout::inPlace) {
    return tuningPacket({tuningGroup, selectCommand, lowByte(slot)});
  }
  return tuningPacket({tuningGroup, selectCommand, deviceIDByte, lowByte(slot)});
}

HIDReportPacket toggleAdvancedMode() { return tuningPacket({tuningGroup, toggleModeCommand}); }

HIDReportPacket enableIdentityReports(bool enable) {
  const std::uint8_t flag = enable ? 0xFF : 0x00;
  return tuningPacket({identityGroup, enableIdentityCommand, flag});
}

HIDReportPacket requestIdentityReport() {
  return tuningPacket({identityGroup, requestIdentityCommand});
}

HIDReportPacket writeTuning(const TuningSnapshot& snapshot, TuningParameter parameter,
                            std::uint8_t rawValue, TuningLayout layout, bool clearSetupFlag) {
  const bool inPlace = layout == TuningLayout::inPlace;
  Bytes block =
      inPlace ? blockInPlace(snapshot.raw()) : blockWithDeviceID(snapshot.raw(), clearSetupFlag);
  invariant(block.size() == TuningSnapshot::length, "a menu block must have 64 bytes");
  block[parameter.offset() + (inPlace ? 0 : 1)] = rawValue;
  return tuningPacket(Bytes(block.begin() + 1, block.end()));
}

std::vector<HIDReportPacket> setRotation(std::int64_t degrees, std::uint8_t outputReportID) {
  return {
      shortPacket(outputReportID, {0xF5, 0, 0, 0, 0, 0, 0}),
      shortPacket(outputReportID, {0xF8, 0x09, 0x01, 0x06, 0x01, 0, 0}),
      shortPacket(outputReportID, {0xF8, 0x81, lowByte(degrees), lowByte(degrees >> 8), 0, 0, 0}),
  };
}

std::vector<HIDReportPacket> wakeSequence(std::uint8_t outputReportID) {
  return {
      shortPacket(outputReportID, {0xF8, 0x09, 0x01, 0x06, 0xFF, 0x01, 0}),
      shortPacket(outputReportID, {0xF8, 0x09, 0x01, 0x06, 0xFF, 0x00, 0}),
      shortPacket(outputReportID, {0xF8, 0x09, 0x01, 0x06, 0xFF, 0x04, 0}),
  };
}

std::vector<HIDReportPacket> tuningAckBurst(std::uint8_t outputReportID, int pairs) {
  invariant(pairs >= 0, "an acknowledge burst cannot have a negative length");
  std::vector<HIDReportPacket> packets;
  for (int i = 0; i < pairs; ++i) {
    packets.push_back(shortPacket(outputReportID, {0xF8, 0x09, 0x01, 0x06, 0xFF, 0x02, 0}));
    packets.push_back(shortPacket(outputReportID, {0xF8, 0x09, 0x01, 0x06, 0x00, 0x00, 0}));
  }
  return packets;
}

}  // namespace FanatecCommands
}  // namespace quorvane
