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

// The characters of a text, each letter in lower case, for comparisons that ignore case in every
// alphabet (in ASCII only on a system without the locale "C.UTF-8"). Does not depend on the user's
// locale. Each byte that is not UTF-8 becomes a code that no character has.
std::u32string foldedCase(std::string_view text);

// "1 value", "2 values": the noun gets an "s" unless the count is 1.
std::string counted(std::size_t count, std::string_view noun);

// Whether a character is a control: C0 and C1 controls, DEL, line and paragraph separators,
// bidirectional controls. They can control a terminal, break a line or change the text direction.
bool isControl(char32_t character);

// Makes untrusted text safe as part of one line on a terminal or in a log: each control becomes a
// space, each byte that is not UTF-8 becomes U+FFFD.
std::string oneLine(std::string_view text);

// Like oneLine(), but keeps line feeds.
std::string safeLines(std::string_view text);

// Parses a decimal integer of 64 bits: an optional minus sign and digits, nothing else.
std::optional<std::int64_t> parseInteger(std::string_view text);

// Parses a hexadecimal number of 32 bits: an optional "0x" and digits, nothing else.
std::optional<std::uint32_t> parseHexNumber(std::string_view text);

}  // namespace quorvane
