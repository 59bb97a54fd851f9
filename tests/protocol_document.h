#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "support/bytes.h"

namespace quorvane {

// docs/protocol.md, as tests hold it to the code. Everything is found by the heading right above
// it, of any level; what is not there throws std::runtime_error, which fails the test.
namespace ProtocolDocument {

using Cells = std::vector<std::string>;

// The rows of the table whose first column is called `column`, without its head. Cells come without
// the blanks and quotes around them.
std::vector<Cells> table(std::string_view heading, std::string_view column);

// The lines of the first block of plain text.
std::vector<std::string> block(std::string_view heading);

// Reads bytes as the document writes them: "ff 03 +2" is ff 03 00 00.
Bytes bytes(std::string_view text);

// Numbers of a cell: hexadecimal with or without "0x", and decimal.
std::int64_t hexNumber(std::string_view text);
std::int64_t number(std::string_view text);

}  // namespace ProtocolDocument
}  // namespace quorvane
