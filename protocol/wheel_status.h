#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "support/bytes.h"

namespace quorvane {

// What the wheel-status report, the base's everyday input report, says about the steering wheel on
// it. Both numbers are little-endian.
struct WheelStatus {
  static constexpr std::uint8_t reportID = 0x01;
  static constexpr std::size_t length = 34;  // report ID counted
  static constexpr std::size_t wheelOffset = 30;
  static constexpr std::size_t firmwareOffset = 32;
  static constexpr std::uint8_t noWheel = 0xFF;  // in the first wheel byte

  std::uint16_t wheelID = 0;
  std::uint16_t firmwareVersion = 0;

  auto operator<=>(const WheelStatus&) const = default;

  // No value unless the bytes are a wheel-status report that carries a wheel.
  static std::optional<WheelStatus> fromReport(ByteView report);
};

}  // namespace quorvane
