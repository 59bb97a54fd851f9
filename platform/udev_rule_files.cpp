#include "platform/udev_rule_files.h"

#include <array>
#include <filesystem>
#include <map>
#include <set>
#include <utility>

namespace quorvane {
namespace {

// In order of priority: of several files with the same name, udev reads the first.
constexpr std::array<const char*, 5> directories{"/etc/udev/rules.d/", "/run/udev/rules.d/",
                                                 "/usr/local/lib/udev/rules.d/",
                                                 "/usr/lib/udev/rules.d/", "/lib/udev/rules.d/"};

struct Found {
  UdevRuleFile file;
  bool isMask = false;
};

Found find(const SystemFiles& system, const std::string& path) {
  std::error_code unknown;
  const auto place = system.place(path);
  const bool isRegular = std::filesystem::is_regular_file(place, unknown);
  const bool isEmpty = isRegular && std::filesystem::file_size(place, unknown) == 0;
  return {{path, system.content(path)}, isEmpty || system.link(path) == "/dev/null"};
}

}  // namespace

UdevRuleFiles collectUdevRules(const SystemFiles& system) {
  std::map<std::string, Found> read;  // by file name, the order in which they run
  std::set<std::filesystem::path> seen;
  UdevRuleFiles result;
  for (const std::string directory : directories) {
    std::error_code missing;
    // A directory may be a link to another one.
    const auto place = std::filesystem::canonical(system.place(directory), missing);
    if (missing || !seen.insert(place).second) continue;
    for (const std::string& name : system.names(directory)) {
      if (!name.ends_with(".rules")) continue;
      Found found = find(system, directory + name);
      if (const auto first = read.find(name); first != read.end()) {
        result.hidden.push_back(
            {std::move(found.file), first->second.file.path, first->second.isMask});
      } else {
        read.emplace(name, std::move(found));
      }
    }
  }
  for (auto& [name, found] : read) result.read.push_back(std::move(found.file));
  return result;
}

}  // namespace quorvane
