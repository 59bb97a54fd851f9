#include "support/user_directories.h"

#include <pwd.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <utility>

namespace quorvane {
namespace {

using std::filesystem::path;

std::optional<path> absolute(const char* text) {
  if (text == nullptr || !path(text).is_absolute()) return std::nullopt;
  return path(text);
}

// The result of `use` for this user's entry in the user database; a default value without entry.
template <typename Use>
auto fromUserDatabase(Use use) -> decltype(use(std::declval<const passwd&>())) {
  passwd entry{};
  passwd* found = nullptr;
  std::array<char, 16384> texts{};
  if (::getpwuid_r(::getuid(), &entry, texts.data(), texts.size(), &found) != 0) return {};
  if (found == nullptr) return {};
  return use(*found);
}

// The directory in the variable, else the one in the home directory.
std::optional<path> userDirectory(const char* variable, const path& inHome) {
  if (auto directory = absolute(std::getenv(variable))) return directory;
  if (const auto home = homeDirectory()) return *home / inHome;
  return std::nullopt;
}

}  // namespace

std::optional<path> homeDirectory() {
  if (auto home = absolute(std::getenv("HOME"))) return home;
  return fromUserDatabase([](const passwd& user) { return absolute(user.pw_dir); });
}

std::string userName() {
  return fromUserDatabase([](const passwd& user) { return std::string(user.pw_name); });
}

std::optional<path> userDataDirectory() {
  return userDirectory("XDG_DATA_HOME", path(".local") / "share");
}

std::optional<path> userStateDirectory() {
  return userDirectory("XDG_STATE_HOME", path(".local") / "state");
}

}  // namespace quorvane
