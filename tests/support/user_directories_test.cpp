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
#include "tests/support/scoped_variable.h"

namespace quorvane {
namespace {

using std::filesystem::path;
using Variable = std::optional<std::string>;

const Variable unset;

// The home directory in the user database.
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
    const ScopedVariable data("XDG_DATA_HOME", c.data);
    const ScopedVariable home("HOME", c.home);
    EXPECT_EQ(userDataDirectory(), c.directory)
        << c.data.value_or("unset") << " " << c.home.value_or("unset");
  }
}

TEST(UserStateDirectory, IsItsVariableElseInTheHomeDirectory) {
  const ScopedVariable data("XDG_DATA_HOME", "/data");
  const ScopedVariable home("HOME", "/home/anna");
  for (const auto& [variable, directory] :
       std::vector<std::pair<Variable, std::string>>{{"/state", "/state"},
                                                     {"state", "/home/anna/.local/state"},
                                                     {"", "/home/anna/.local/state"},
                                                     {unset, "/home/anna/.local/state"}}) {
    const ScopedVariable state("XDG_STATE_HOME", variable);
    EXPECT_EQ(userStateDirectory(), directory);
  }
}

TEST(UserDataDirectory, AUserWithoutAHomeHasNone) {
  // Only root can become a user who is not in the user database.
  if (::geteuid() != 0) return;
  uid_t stranger = 54321;
  while (::getpwuid(stranger) != nullptr) ++stranger;
  const ScopedVariable data("XDG_DATA_HOME", unset);
  for (const Variable& value : {unset, Variable(""), Variable("anna"), Variable("/anna")}) {
    const ScopedVariable home("HOME", value);
    EXPECT_EQ(inChildProcess([&]() -> std::string {
                becomeOrdinaryUser(stranger);
                return userDataDirectory().value_or("none");
              }),
              value == "/anna" ? "/anna/.local/share" : "none");
  }
}

TEST(HomeDirectory, IsWhereTheEnvironmentSaysElseTheUserDatabase) {
  const std::vector<std::pair<Variable, path>> cases{
      {"/home/anna", "/home/anna"}, {"relative", homeOfTheUser()}, {unset, homeOfTheUser()}};
  for (const auto& [value, wanted] : cases) {
    const ScopedVariable home("HOME", value);
    EXPECT_EQ(homeDirectory().value_or(path()), wanted);
  }
}

TEST(UserName, IsTheOneInTheUserDatabase) {
  const passwd* const entry = ::getpwuid(::getuid());
  EXPECT_EQ(userName(), entry == nullptr ? "" : entry->pw_name);
  EXPECT_EQ(inChildProcess([] {
              becomeOrdinaryUser(4'000'000);
              return ::getuid() == 4'000'000 ? "name: " + userName() : std::string("name: ");
            }),
            "name: ");
}

}  // namespace
}  // namespace quorvane
