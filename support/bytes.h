#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

using Bytes = std::vector<std::uint8_t>;
using ByteView = std::span<const std::uint8_t>;

// Two lower-case hexadecimal digits per byte, separated by a space; empty for no bytes.
std::string hexDump(ByteView bytes);

// Parses hexadecimal bytes typed by people: two digits per byte, of either case, with or without
// spaces between bytes. Each group between spaces may start with "0x"; a group of a single digit is
// one byte. None for anything else, also for text without bytes.
std::optional<Bytes> parseHexBytes(std::string_view text);

// Little-endian 16-bit value of two bytes.
constexpr std::uint16_t littleEndian16(std::uint8_t low, std::uint8_t high) {
  return static_cast<std::uint16_t>(low | (high << 8));
}

}  // namespace quorvane
