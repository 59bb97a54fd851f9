#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quorvane {

// ASCII letters only: menu codes and words on a command line are ASCII.
std::string lowerCase(std::string_view text);
bool equalIgnoringCase(std::string_view a, std::string_view b);

// "1 value", "2 values": the noun takes an "s" unless there is one.
std::string counted(std::size_t count, std::string_view noun);

// The text on one line, without what steers a terminal: control characters become spaces.
std::string oneLine(std::string_view text);

// A whole decimal number with an optional sign and nothing around it, within 64 bits.
std::optional<std::int64_t> parseInteger(std::string_view text);

// Hexadecimal digits, optionally led by "0x", and nothing around them, within 32 bits.
std::optional<std::uint32_t> parseHexNumber(std::string_view text);

}  // namespace quorvane
