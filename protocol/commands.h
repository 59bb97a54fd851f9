#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "protocol/report_packet.h"
#include "protocol/tuning_parameter.h"
#include "protocol/tuning_snapshot.h"

namespace quorvane {

// Where the menu block sits in a write: at the positions of the tuning report ("linux"), or one
// byte later, behind a device-ID byte ("sdk").
enum class TuningLayout { inPlace, deviceID };

// "linux" for inPlace, "sdk" for deviceID.
std::string_view rawValue(TuningLayout layout);

// The exact inverse of rawValue; any other text gives no value.
std::optional<TuningLayout> tuningLayout(std::string_view rawValue);

// Builders of everything that is said to a base. Pure: order and pauses are the session's business.
namespace FanatecCommands {

// The tuning channel: 64-byte reports, report ID included.
inline constexpr std::uint8_t tuningReportID = 0xFF;
inline constexpr std::size_t tuningPayloadLength = 63;

// The first payload byte on the tuning channel.
inline constexpr std::uint8_t tuningGroup = 0x03;
inline constexpr std::uint8_t identityGroup = 0x08;

// The second payload byte in the tuning group.
inline constexpr std::uint8_t writeCommand = 0x00;
inline constexpr std::uint8_t selectCommand = 0x01;
inline constexpr std::uint8_t requestCommand = 0x02;
inline constexpr std::uint8_t saveCommand = 0x03;
inline constexpr std::uint8_t resetCommand = 0x04;
inline constexpr std::uint8_t toggleModeCommand = 0x06;

// The second payload byte in the identity group.
inline constexpr std::uint8_t enableIdentityCommand = 0x01;
inline constexpr std::uint8_t requestIdentityCommand = 0x02;

// The short command reports have 7 bytes besides their report ID.
inline constexpr std::size_t shortPayloadLength = 7;

// Answered by a tuning report.
HIDReportPacket requestTuningSnapshot();

// Resets every set; the base returns to the standard menu.
HIDReportPacket resetTuningToFactoryDefaults();

// Saves the active values into a set; the low byte of `slot` is sent.
HIDReportPacket saveTuning(std::int64_t slot);

// Makes a set active; the low byte of `slot` is sent.
HIDReportPacket selectTuningSlot(std::int64_t slot, TuningLayout layout);

// Switches between the standard and the advanced menu.
HIDReportPacket toggleAdvancedMode();

HIDReportPacket enableIdentityReports(bool enable);

// Answered by an identity report once those are enabled.
HIDReportPacket requestIdentityReport();

// Sets one byte of the menu: the base knows no smaller write than the whole block, so the block is
// sent back as last reported, with this byte changed. `clearSetupFlag` drops all but the set number
// from the status byte in the deviceID layout; the inPlace layout always sends it as 0.
HIDReportPacket writeTuning(const TuningSnapshot& snapshot, TuningParameter parameter,
                            std::uint8_t rawValue, TuningLayout layout, bool clearSetupFlag);

// The direct steering-angle command. The low 16 bits of `degrees` are sent, unchecked.
std::vector<HIDReportPacket> setRotation(std::int64_t degrees, std::uint8_t outputReportID);

std::vector<HIDReportPacket> wakeSequence(std::uint8_t outputReportID);

// 2 x `pairs` packets; a negative number stops the program.
std::vector<HIDReportPacket> tuningAckBurst(std::uint8_t outputReportID, int pairs);

}  // namespace FanatecCommands
}  // namespace quorvane
