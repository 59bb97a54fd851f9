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

// Two lower-case hexadecimal digits a byte, joined by one space; empty for no bytes.
std::string hexDump(ByteView bytes);

// Reads bytes written by people: two-digit groups with or without spaces between them, each group
// optionally led by "0x", digits of either case; a single digit stands for one byte. Empty optional
// for anything else, also for a text without any byte.
std::optional<Bytes> parseHexBytes(std::string_view text);

// Little-endian 16-bit value of two bytes.
constexpr std::uint16_t littleEndian16(std::uint8_t low, std::uint8_t high) {
  return static_cast<std::uint16_t>(low | (high << 8));
}

}  // namespace quorvane
