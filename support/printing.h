#pragma once

#include <fmt/format.h>

#include <cstdio>
#include <string_view>
#include <utility>

namespace quorvane {

// These never throw because the stream fails: the stream keeps its error.

// Writes bytes as they are.
void writeTo(std::FILE* stream, std::string_view bytes);

// Writes lines for a person, with the controls in them replaced (safeLines). A line feed in foreign
// text would begin a line of its own: such text goes through oneLine first.
void printLinesTo(std::FILE* stream, std::string_view lines);

// Formats such lines and writes them.
template <typename... Args>
void printTo(std::FILE* stream, fmt::format_string<Args...> format, Args&&... args) {
  printLinesTo(stream, fmt::format(format, std::forward<Args>(args)...));
}

// Writes out what the stream still holds.
void flush(std::FILE* stream);

// Writes out what standard output still holds. The errno of the first failure to write to it by one
// of these functions; 0 when everything was written.
int finishStandardOutput();

}  // namespace quorvane
