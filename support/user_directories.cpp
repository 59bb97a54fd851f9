#include "support/user_directories.h"

#include <pwd.h>
#include <unistd.h>

#include <array>
#include <cstdlib>

namespace quorvane {
namespace {

using std::filesystem::path;

std::optional<path> absolute(const char* text) {
  if (text == nullptr || !path(text).is_absolute()) return std::nullopt;
  return path(text);
}

std::optional<path> homeDirectory() {
  if (auto home = absolute(std::getenv("HOME"))) return home;
  passwd entry{};
  passwd* found = nullptr;
  std::array<char, 16384> texts{};
  if (::getpwuid_r(::getuid(), &entry, texts.data(), texts.size(), &found) != 0) return {};
  return found != nullptr ? absolute(found->pw_dir) : std::nullopt;
}

}  // namespace

std::optional<path> userDataDirectory() {
  if (auto directory = absolute(std::getenv("XDG_DATA_HOME"))) return directory;
  if (const auto home = homeDirectory()) return *home / ".local" / "share";
  return std::nullopt;
}

}  // namespace quorvane
