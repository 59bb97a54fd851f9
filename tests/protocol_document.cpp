#include "tests/protocol_document.h"

#include <fstream>
#include <optional>
#include <stdexcept>

#include "support/text.h"

namespace quorvane::ProtocolDocument {
namespace {

constexpr std::string_view textFence = "```text";
constexpr std::string_view fence = "```";

template <typename Value>
Value found(const std::optional<Value>& value, std::string_view what, std::string_view where) {
  if (!value) throw std::runtime_error(std::string(what) + ": " + std::string(where));
  return *value;
}

std::string trimmed(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(" `");
  if (begin == std::string_view::npos) return {};
  return std::string(text.substr(begin, text.find_last_not_of(" `") - begin + 1));
}

// The lines between a heading and the next one.
std::vector<std::string> section(std::string_view heading) {
  std::ifstream file(PROTOCOL_DOCUMENT);
  std::vector<std::string> lines;
  bool isInside = false;
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with('#')) {
      isInside = trimmed(line.substr(line.find_first_not_of('#'))) == heading;
    } else if (isInside) {
      lines.push_back(line);
    }
  }
  return lines;
}

// "| a | b |" as {"a", "b"}.
Cells cellsOf(std::string_view line) {
  Cells cells;
  line.remove_prefix(1);
  for (std::size_t end = line.find('|'); end != std::string_view::npos; end = line.find('|')) {
    cells.push_back(trimmed(line.substr(0, end)));
    line.remove_prefix(end + 1);
  }
  return cells;
}

}  // namespace

std::vector<Cells> table(std::string_view heading, std::string_view column) {
  std::vector<Cells> rows;
  bool isInside = false;
  for (const std::string& line : section(heading)) {
    if (!line.starts_with('|')) {
      isInside = false;
    } else if (const Cells cells = cellsOf(line); cells.at(0) == column) {
      isInside = true;
    } else if (isInside && !line.starts_with("|--")) {
      rows.push_back(cells);
    }
  }
  return found(rows.empty() ? std::nullopt : std::optional(rows), "no table below", heading);
}

std::vector<std::string> block(std::string_view heading) {
  std::optional<std::vector<std::string>> lines;
  for (const std::string& line : section(heading)) {
    if (!lines) {
      if (line == textFence) lines.emplace();
    } else if (line == fence) {
      break;
    } else {
      lines->push_back(line);
    }
  }
  return found(lines, "no block below", heading);
}

Bytes bytes(std::string_view text) {
  const std::size_t plus = text.find('+');
  const std::size_t last = text.substr(0, plus).find_last_not_of(' ');
  Bytes result = found(parseHexBytes(text.substr(0, last + 1)), "no bytes", text);
  if (plus != std::string_view::npos) {
    result.resize(result.size() + static_cast<std::size_t>(number(text.substr(plus + 1))));
  }
  return result;
}

std::int64_t hexNumber(std::string_view text) {
  return found(parseHexNumber(text), "no number", text);
}

std::int64_t number(std::string_view text) { return found(parseInteger(text), "no number", text); }

}  // namespace quorvane::ProtocolDocument
