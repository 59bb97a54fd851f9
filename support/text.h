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
bool startsWithIgnoringCase(std::string_view text, std::string_view beginning);

// "1 value", "2 values": the noun takes an "s" unless there is one.
std::string counted(std::size_t count, std::string_view noun);

// Whether a character steers a terminal, breaks a line or changes the direction of its text: C0 and
// C1 controls, DEL, line and paragraph separators, bidirectional controls.
bool isControl(char32_t character);

// Foreign text as a part of one line on a terminal or in a log: each control becomes a space, each
// byte that is not UTF-8 becomes U+FFFD.
std::string oneLine(std::string_view text);

// The same for a text of several lines, whose line feeds stay.
std::string safeLines(std::string_view text);

// A whole decimal number, with a minus sign when it is negative and nothing around it, within 64
// bits.
std::optional<std::int64_t> parseInteger(std::string_view text);

// Hexadecimal digits, optionally led by "0x", and nothing around them, within 32 bits.
std::optional<std::uint32_t> parseHexNumber(std::string_view text);

}  // namespace quorvane
