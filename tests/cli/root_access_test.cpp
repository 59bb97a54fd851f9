#include "cli/root_access.h"

#include <gtest/gtest.h>

#include <system_error>

#include "cli/udev_rule_script.h"
#include "tests/support/ordinary_user.h"
#include "tests/support/temporary_directory.h"

namespace quorvane {
namespace {

int runScript(const std::string& script, const std::vector<std::string>& arguments = {}) {
  std::vector<std::string> words{"/bin/sh", "-c", script, "test"};
  words.insert(words.end(), arguments.begin(), arguments.end());
  return runProgram(words);
}

TEST(RunProgram, TellsHowItEnded) {
  EXPECT_EQ(runScript("exit 0"), 0);
  EXPECT_EQ(runScript("exit $1", {"45"}), 45);
  EXPECT_EQ(runScript("kill -9 $$"), -1);
  EXPECT_THROW(runProgram({"/nowhere/program"}), std::system_error);
}

TEST(RunProgram, KeepsStandardOutputForResults) {
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  EXPECT_EQ(runScript("echo a message"), 0);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "a message\n");
}

TEST(SystemProgram, IsFoundInTheFoldersOfTheSystemAlone) {
  const TemporaryDirectory root;
  const RootAccess access{root.path(), {}, {}};
  EXPECT_EQ(systemProgram(access, "sudo"), "");
  std::filesystem::create_directories(root / "usr/bin");
  putFile(root / "usr/bin/sudo", "");
  EXPECT_EQ(systemProgram(access, "sudo"), "");  // not executable
  std::filesystem::remove(root / "usr/bin/sudo");
  std::filesystem::create_symlink("/bin/true", root / "usr/bin/sudo");
  EXPECT_EQ(systemProgram(access, "sudo"), (root / "usr/bin/sudo").string());
}

// Stands in for root on a read-only file system: an ordinary user in a folder without write
// permission.
TEST(RuleScripts, TellThatAFolderIsReadOnly) {
  const TemporaryDirectory root;
  const auto folder = root / "etc/udev/rules.d";
  std::filesystem::create_directories(folder);
  std::filesystem::permissions(folder, std::filesystem::perms(0555));
  std::filesystem::permissions(root.path(), std::filesystem::perms(0755));
  const std::string file = folder / "70-quorvane.rules";
  const auto statusOf = [](const char* script, const std::vector<std::string>& arguments) {
    return inChildProcess([&] {
      becomeOrdinaryUser();
      return std::to_string(runScript(script, arguments));
    });
  };
  EXPECT_EQ(statusOf(installRuleScript, {"/bin/true", "0eb7", file, "text", "", ""}), "45");
  EXPECT_EQ(statusOf(removeRuleScript, {"/bin/true", file}), "45");
  EXPECT_TRUE(std::filesystem::is_empty(folder));
}

}  // namespace
}  // namespace quorvane
