#include "history/history_file.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <utility>

namespace quorvane {
namespace {

constexpr std::size_t keptLines = HistoryFile::mostLines / 4 * 3;
constexpr std::size_t keptBytes = HistoryFile::mostBytes / 4 * 3;

// A longer file was not written by Quorvane.
constexpr std::uint64_t longestHistory = 4 * HistoryFile::mostBytes;

constexpr std::size_t longestSerialNumber = 64;

bool isUsualInNames(char c) {
  return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

std::string percentEncoded(std::string_view text) {
  std::string result;
  for (const char c : text) {
    result += isUsualInNames(c) ? std::string(1, c)
                                : fmt::format("%{:02X}", static_cast<unsigned char>(c));
  }
  return result;
}

std::size_t lineCount(std::string_view content) {
  return static_cast<std::size_t>(std::count(content.begin(), content.end(), '\n'));
}

bool fits(std::string_view content) {
  return content.size() <= HistoryFile::mostBytes && lineCount(content) <= HistoryFile::mostLines;
}

// The whole lines at the end, as many as are kept.
std::string_view newestLines(std::string_view content) {
  std::size_t begin = content.size();
  for (std::size_t lines = 0; begin > 0 && lines < keptLines; ++lines) {
    const std::size_t before = content.substr(0, begin - 1).rfind('\n');
    const std::size_t start = before == std::string_view::npos ? 0 : before + 1;
    if (content.size() - start > keptBytes) break;
    begin = start;
  }
  return content.substr(begin);
}

std::string withoutOldLines(const std::string& content) {
  return fits(content) ? content : std::string(newestLines(content));
}

std::optional<SharedFile::Update> shortened(const std::optional<std::string>& content) {
  if (!content || fits(*content)) return std::nullopt;
  return SharedFile::Update{withoutOldLines(*content), std::nullopt};
}

}  // namespace

std::string historyFileName(const HIDDeviceInfo& base) {
  const std::string place =
      base.serialNumber.empty()
          ? fmt::format("at-{:08x}", base.locationID)
          : percentEncoded(std::string_view(base.serialNumber).substr(0, longestSerialNumber));
  return fmt::format("{:04x}-{:04x}-{}.jsonl", base.vendorID, base.productID, place);
}

HistoryFile::HistoryFile(std::filesystem::path file, Clock& clock)
    : path_(std::move(file)), file_(path_, clock) {}

void HistoryFile::append(const HistoryRecord& record) const {
  file_.append(recordLine(record), SharedFile::Sync::yes);
}

void HistoryFile::append(const UUID& record, const HistoryOutcome& outcome) const {
  const auto result = file_.append(outcomeLine(record, outcome), SharedFile::Sync::no);
  if (isTooLong(result.version.value())) file_.change(shortened);
}

void HistoryFile::add(const Addition& addition) const {
  file_.change([&](const std::optional<std::string>& present) -> std::optional<SharedFile::Update> {
    std::string content = present.value_or("");
    const auto record = addition(decodeHistory(content));
    if (!record) return std::nullopt;
    if (!content.empty() && content.back() != '\n') content += '\n';
    content += recordLine(*record) + outcomeLine(record->id, record->outcome.value());
    return SharedFile::Update{withoutOldLines(content), std::nullopt};
  });
}

bool HistoryFile::isTooLong(const FileVersion& version) const {
  if (version.size > static_cast<std::int64_t>(mostBytes)) return true;
  return lineCount(readFile(path_, longestHistory)) > mostLines;
}

HistoryContents HistoryFile::read() const {
  if (!versionOfFile(path_)) return {};
  return decodeHistory(readFile(path_, longestHistory));
}

}  // namespace quorvane
