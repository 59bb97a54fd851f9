#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "support/bytes.h"

namespace quorvane {

// The data about the attached steering wheel in the wheel-status report, which the base sends
// steadily. Both numbers are little-endian in the report.
struct WheelStatus {
  static constexpr std::uint8_t reportID = 0x01;
  static constexpr std::size_t length = 34;  // including the report ID
  static constexpr std::size_t wheelOffset = 30;
  static constexpr std::size_t firmwareOffset = 32;
  static constexpr std::uint8_t noWheel = 0xFF;  // in the first wheel byte

  std::uint16_t wheelID = 0;
  std::uint16_t firmwareVersion = 0;

  auto operator<=>(const WheelStatus&) const = default;

  // None unless the bytes are a wheel-status report and a wheel is attached.
  static std::optional<WheelStatus> fromReport(ByteView report);
};

}  // namespace quorvane
