#pragma once

#include <QObject>
#include <cstddef>
#include <string>
#include <vector>

#include "app/messages.h"
#include "presets/uuid.h"
#include "support/clock.h"

namespace quorvane {

// One entry of the log that the window shows.
struct LogEntry {
  UUID id = UUID::random();
  WallClock::time_point time = WallClock::now();
  std::string text;
  bool isError = false;

  bool operator==(const LogEntry&) const = default;
};

// The log and the status line of the window. Main thread only.
class Log final : public QObject {
  Q_OBJECT

 public:
  static constexpr std::size_t longest = 500;

  const std::vector<LogEntry>& entries() const {
    return entries_;
  }  // oldest first, at most longest
  const std::string& statusLine() const { return statusLine_; }

  // Adds an entry. Its text also becomes the status line.
  void append(std::string text, bool isError = false);
  void setStatus(std::string text);

 signals:
  void changed();

 private:
  std::vector<LogEntry> entries_;
  std::string statusLine_ = Messages::looking;
};

}  // namespace quorvane
