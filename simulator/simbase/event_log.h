#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace quorvane {

// A log file of the kernel's actions on the base, one line per event: seconds on the monotonic
// clock, then the event. Flushed after each line.
class EventLog {
 public:
  // An empty path disables the log. Throws std::system_error when the file cannot be created.
  explicit EventLog(const std::string& path);

  void add(std::string_view event);

 private:
  struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };
  std::unique_ptr<std::FILE, Close> file_;
};

}  // namespace quorvane
