#include "platform/udev_rule_files.h"

#include <gtest/gtest.h>

#include "tests/platform/system_tree.h"

namespace quorvane::udev_rule_files_test {
namespace {

std::vector<std::string> paths(const UdevRuleFiles& files) {
  std::vector<std::string> paths;
  paths.reserve(files.read.size());
  for (const UdevRuleFile& file : files.read) paths.push_back(file.path);
  return paths;
}

TEST(UdevRuleFiles, RunInTheOrderOfTheirNames) {
  const SystemTree tree;
  tree.file("/usr/lib/udev/rules.d/50-default.rules", "b");
  tree.file("/etc/udev/rules.d/70-quorvane.rules", "c");
  tree.file("/run/udev/rules.d/10-first.rules", "a");
  tree.file("/usr/local/lib/udev/rules.d/99-last.rules", "d");
  tree.file("/etc/udev/rules.d/README", "no rules");
  const UdevRuleFiles files = collectUdevRules(SystemFiles(tree.root()));
  EXPECT_EQ(paths(files), (std::vector<std::string>{"/run/udev/rules.d/10-first.rules",
                                                    "/usr/lib/udev/rules.d/50-default.rules",
                                                    "/etc/udev/rules.d/70-quorvane.rules",
                                                    "/usr/local/lib/udev/rules.d/99-last.rules"}));
  EXPECT_EQ(files.read[2].text, "c");
  EXPECT_TRUE(files.hidden.empty());
}

TEST(UdevRuleFiles, HideOthersOfTheirName) {
  struct Case {
    std::string first;
    std::string second;
    bool isMask;
    void (*put)(const SystemTree&, const std::string&);
  };
  const auto link = [](const SystemTree& tree, const std::string& path) {
    tree.link(path, "/dev/null");
  };
  const auto empty = [](const SystemTree& tree, const std::string& path) { tree.file(path, ""); };
  const auto rules = [](const SystemTree& tree, const std::string& path) {
    tree.file(path, R"(MODE="0600")");
  };
  const std::string name = "/udev/rules.d/70-quorvane.rules";
  for (const Case& test : {Case{"/etc", "/usr/lib", true, link}, Case{"/etc", "/run", true, empty},
                           Case{"/run", "/usr/local/lib", false, rules},
                           Case{"/usr/local/lib", "/usr/lib", false, rules}}) {
    const SystemTree tree;
    test.put(tree, test.first + name);
    tree.file(test.second + name, "hidden");
    const UdevRuleFiles files = collectUdevRules(SystemFiles(tree.root()));
    EXPECT_EQ(paths(files), std::vector<std::string>{test.first + name});
    ASSERT_EQ(files.hidden.size(), 1U) << test.first;
    EXPECT_EQ(files.hidden[0].file.path, test.second + name);
    EXPECT_EQ(files.hidden[0].file.text, "hidden");
    EXPECT_EQ(files.hidden[0].hiddenBy, test.first + name);
    EXPECT_EQ(files.hidden[0].isMask, test.isMask) << test.first;
  }
}

TEST(UdevRuleFiles, ADirectoryThatLinksToAnotherCountsOnce) {
  const SystemTree tree;
  tree.file("/usr/lib/udev/rules.d/70-a.rules", "a");
  tree.link("/lib", "usr/lib");
  const UdevRuleFiles files = collectUdevRules(SystemFiles(tree.root()));
  EXPECT_EQ(paths(files), std::vector<std::string>{"/usr/lib/udev/rules.d/70-a.rules"});
  EXPECT_TRUE(files.hidden.empty());
}

}  // namespace
}  // namespace quorvane::udev_rule_files_test
