#pragma once

#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

namespace quorvane {

// RAII: sets or unsets an environment variable, and restores it in the destructor. Not thread-safe:
// no other thread may read the environment meanwhile.
class ScopedVariable {
 public:
  explicit ScopedVariable(std::string name, const std::optional<std::string>& value = std::nullopt)
      : name_(std::move(name)) {
    if (const char* const before = std::getenv(name_.c_str())) before_ = before;
    set(value);
  }
  ~ScopedVariable() { set(before_); }
  ScopedVariable(const ScopedVariable&) = delete;
  ScopedVariable& operator=(const ScopedVariable&) = delete;

 private:
  void set(const std::optional<std::string>& value) const {
    if (value) {
      ::setenv(name_.c_str(), value->c_str(), 1);
    } else {
      ::unsetenv(name_.c_str());
    }
  }

  const std::string name_;
  std::optional<std::string> before_;
};

}  // namespace quorvane
