#include "platform/os_release.h"

#include "platform/fields.h"

namespace quorvane {

std::string assignedValue(const std::string& text, std::string_view key) {
  for (std::string_view line : split(text, '\n')) {
    if (!line.starts_with(key) || line.substr(key.size()).substr(0, 1) != "=") continue;
    line.remove_prefix(key.size() + 1);
    if (line.size() >= 2 && line.front() == '"' && line.back() == '"') {
      line = line.substr(1, line.size() - 2);
    }
    return std::string(line);
  }
  return {};
}

std::string osReleaseField(const SystemFiles& system, std::string_view key) {
  for (const char* const file : {"/etc/os-release", "/usr/lib/os-release"}) {
    if (system.exists(file)) return assignedValue(system.content(file), key);
  }
  return {};
}

}  // namespace quorvane
