#include "support/user_directories.h"

#include <gtest/gtest.h>
#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/child_process.h"

namespace quorvane {
namespace {

using std::filesystem::path;
using Variable = std::optional<std::string>;

const Variable unset;

// Gives the process another value of an environment variable while it lives.
class Environment {
 public:
  Environment(std::string name, const Variable& value) : name_(std::move(name)) {
    if (const char* const before = std::getenv(name_.c_str())) before_ = before;
    set(value);
  }
  ~Environment() { set(before_); }
  Environment(const Environment&) = delete;
  Environment& operator=(const Environment&) = delete;

 private:
  void set(const Variable& value) const {
    if (value) {
      ::setenv(name_.c_str(), value->c_str(), 1);
    } else {
      ::unsetenv(name_.c_str());
    }
  }

  const std::string name_;
  Variable before_;
};

// Of the user database.
path homeOfTheUser() {
  const passwd* const entry = ::getpwuid(::getuid());
  return entry == nullptr ? path() : path(entry->pw_dir);
}

TEST(UserDataDirectory, IsWhereTheEnvironmentSays) {
  const path fallback = homeOfTheUser() / ".local/share";
  struct Case {
    Variable data;
    Variable home;
    path directory;
  };
  const std::vector<Case> cases{
      {"/data", "/home/anna", "/data"},
      {"/data", "", "/data"},
      {"/data", unset, "/data"},
      {"/data", "anna", "/data"},
      {"/", "/home/anna", "/"},
      {"/a b/\xC3\xA4", "/home/anna", "/a b/\xC3\xA4"},
      {unset, "/home/anna", "/home/anna/.local/share"},
      {"", "/home/anna", "/home/anna/.local/share"},
      {"data", "/home/anna", "/home/anna/.local/share"},
      {"./data", "/home/anna", "/home/anna/.local/share"},
      {"~/data", "/home/anna", "/home/anna/.local/share"},
      {" /data", "/home/anna", "/home/anna/.local/share"},
      {unset, "/", "/.local/share"},
      {unset, unset, fallback},
      {unset, "", fallback},
      {unset, "anna", fallback},
      {unset, "./anna", fallback},
      {"", unset, fallback},
      {"", "", fallback},
      {"data", "anna", fallback},
  };
  for (const Case& c : cases) {
    const Environment data("XDG_DATA_HOME", c.data);
    const Environment home("HOME", c.home);
    EXPECT_EQ(userDataDirectory(), c.directory)
        << c.data.value_or("unset") << " " << c.home.value_or("unset");
  }
}

TEST(UserDataDirectory, AUserWithoutAHomeHasNone) {
  // Only root can become a user whom the database does not know.
  if (::geteuid() != 0) return;
  uid_t stranger = 54321;
  while (::getpwuid(stranger) != nullptr) ++stranger;
  const Environment data("XDG_DATA_HOME", unset);
  for (const Variable& value : {unset, Variable(""), Variable("anna"), Variable("/anna")}) {
    const Environment home("HOME", value);
    EXPECT_EQ(inChildProcess([&]() -> std::string {
                becomeOrdinaryUser(stranger);
                return userDataDirectory().value_or("none");
              }),
              value == "/anna" ? "/anna/.local/share" : "none");
  }
}

}  // namespace
}  // namespace quorvane
