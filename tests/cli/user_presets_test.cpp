#include "cli/user_presets.h"

#include <gtest/gtest.h>
#include <pwd.h>
#include <unistd.h>

#include <cstdlib>

#include "cli/context.h"
#include "tests/support/child_process.h"

namespace quorvane {
namespace {

TEST(UserPresetStore, IsWhereTheWorldsPresetsAreByDefault) {
  EXPECT_EQ(inChildProcess([] {
              ::setenv("XDG_DATA_HOME", "/data", 1);
              return World{}.presets().fileURL().string();
            }),
            "/data/Quorvane/presets.json");
}

TEST(UserPresetStore, TheOneOfSimulatedBasesIsInAFolderBesideIt) {
  EXPECT_EQ(inChildProcess([] {
              ::setenv("XDG_DATA_HOME", "/data", 1);
              return World{}.simulatedPresets().fileURL().string();
            }),
            "/data/Quorvane/simulated/presets.json");
}

TEST(UserPresetStore, AUserWithoutAHomeGetsAFailureAndNoEndOfTheProgram) {
  constexpr uid_t nobodysUser = 54321;
  ASSERT_EQ(::getpwuid(nobodysUser), nullptr);
  EXPECT_EQ(inChildProcess([] {
              becomeOrdinaryUser(nobodysUser);
              ::setenv("HOME", "", 1);
              ::unsetenv("XDG_DATA_HOME");
              // A user who is not root keeps the home directory of the user database.
              const bool hasHome = ::getpwuid(::geteuid()) != nullptr;
              const auto file = hasHome ? std::string() : userPresetStore().fileURL().string();
              return "presets.json: You have no home directory to keep it in" + file;
            }),
            "presets.json: You have no home directory to keep it in");
}

}  // namespace
}  // namespace quorvane
