#pragma once

#include <fmt/format.h>

#include <cstdio>
#include <string_view>
#include <utility>

namespace quorvane {

// Failures of the stream throw nothing: finishStandardOutput() reports them for standard output.

// Writes bytes as they are.
void writeTo(std::FILE* stream, std::string_view bytes);

// Writes lines for a person, with control characters replaced by safeLines(), which keeps line
// feeds. Pass untrusted text through oneLine() first.
void printLinesTo(std::FILE* stream, std::string_view lines);

// Formats such lines and writes them.
template <typename... Args>
void printTo(std::FILE* stream, fmt::format_string<Args...> format, Args&&... args) {
  printLinesTo(stream, fmt::format(format, std::forward<Args>(args)...));
}

void flush(std::FILE* stream);

// Flushes standard output. Returns the errno of the first failed write to it by these functions, or
// 0 when everything was written.
int finishStandardOutput();

}  // namespace quorvane
