#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "support/bytes.h"

namespace quorvane {

// Reads docs/protocol.md, for tests that compare it with the code. Tables and blocks are found by
// the nearest heading above them, of any level. Throws std::runtime_error for what is not there.
namespace ProtocolDocument {

using Cells = std::vector<std::string>;

// The rows of the table whose first column is called `column`, without its head. Blanks and
// backquotes around cells are removed.
std::vector<Cells> table(std::string_view heading, std::string_view column);

// The lines of the first ```text block.
std::vector<std::string> block(std::string_view heading);

// Parses bytes in the document's notation: "ff 03 +2" is ff 03 00 00.
Bytes bytes(std::string_view text);

// Parse a number in a cell: hexadecimal with or without "0x"; decimal.
std::int64_t hexNumber(std::string_view text);
std::int64_t number(std::string_view text);

}  // namespace ProtocolDocument
}  // namespace quorvane
