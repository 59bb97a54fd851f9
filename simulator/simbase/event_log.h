#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace quorvane {

// What the kernel did to the base, one line an event: seconds on the monotonic clock, then the
// event. Written out at once.
class EventLog {
 public:
  // Writes nothing without a path. Throws std::system_error when the file cannot be made.
  explicit EventLog(const std::string& path);

  void add(std::string_view event);

 private:
  struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };
  std::unique_ptr<std::FILE, Close> file_;
};

}  // namespace quorvane
