#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>

#include "hid/device_info.h"
#include "history/history_coding.h"
#include "support/shared_file.h"

namespace quorvane {

// The name of a base's history file: vendor, product and serial number, or the USB port for a base
// without one. Every character that is unusual in file names is percent-encoded.
std::string historyFileName(const HIDDeviceInfo& base);

// The history of one base in one file, which several processes may use at once. Thread-safe; all
// operations block for file input and output, and throw FileError.
class HistoryFile {
 public:
  // When a limit is exceeded, the newest three quarters are kept.
  static constexpr std::size_t mostLines = 2000;
  static constexpr std::uint64_t mostBytes = std::uint64_t{2} << 20;  // 2 MiB

  // The clock must outlive this.
  explicit HistoryFile(std::filesystem::path file, Clock& clock = Clock::system());

  // Appends a record without its outcome, durably.
  void append(const HistoryRecord& record) const;

  // Appends the outcome of a record, then removes old lines if there are too many.
  void append(const UUID& record, const HistoryOutcome& outcome) const;

  // Receives what is in the file, and returns a record with its outcome to add, none for nothing.
  using Addition = std::function<std::optional<HistoryRecord>(const HistoryContents& contents)>;

  // Adds a record that depends on what other programs have added. Calls `addition` with the lock
  // held, and again if the file changes meanwhile.
  void add(const Addition& addition) const;

  // Empty when there is no file.
  HistoryContents read() const;

 private:
  bool isTooLong(const FileVersion& version) const;

  const std::filesystem::path path_;
  const SharedFile file_;
};

}  // namespace quorvane
