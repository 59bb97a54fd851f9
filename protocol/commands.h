#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "protocol/report_packet.h"
#include "protocol/tuning_parameter.h"
#include "protocol/tuning_snapshot.h"

namespace quorvane {

// The position of the menu block in a write: at the offsets of the tuning report ("linux"), or one
// byte later, after a device-ID byte ("sdk").
enum class TuningLayout { inPlace, deviceID };

// "linux" for inPlace, "sdk" for deviceID.
std::string_view rawValue(TuningLayout layout);

// The exact inverse of rawValue(); none for any other text.
std::optional<TuningLayout> tuningLayout(std::string_view rawValue);

// Builders of every packet that is sent to a base. Pure functions: the session decides on order and
// pauses.
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

// The length of a short command report, without the report ID.
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

// Sets one byte of the menu. The base accepts only writes of the whole block, so the packet is the
// snapshot's block with this byte changed. In the deviceID layout, `clearSetupFlag` clears all bits
// of the status byte but the set number; the inPlace layout always sends that byte as 0.
HIDReportPacket writeTuning(const TuningSnapshot& snapshot, TuningParameter parameter,
                            std::uint8_t rawValue, TuningLayout layout, bool clearSetupFlag);

// The steering-angle command outside the tuning menu. Sends the low 16 bits of `degrees`,
// unchecked.
std::vector<HIDReportPacket> setRotation(std::int64_t degrees, std::uint8_t outputReportID);

std::vector<HIDReportPacket> wakeSequence(std::uint8_t outputReportID);

// Returns 2 x `pairs` packets. A negative number ends the program.
std::vector<HIDReportPacket> tuningAckBurst(std::uint8_t outputReportID, int pairs);

}  // namespace FanatecCommands
}  // namespace quorvane
