#include "platform/own_udev_rule.h"

#include <gtest/gtest.h>

#include "tests/platform/system_tree.h"

namespace quorvane::own_udev_rule_test {
namespace {

constexpr const char* packageRule = "/usr/lib/udev/rules.d/70-quorvane.rules";

TEST(OwnUdevRule, ServesFromTheFirstFolderThatHasIt) {
  const SystemTree tree;
  const SystemFiles system(tree.root());
  EXPECT_EQ(servingRuleFile(system), "");
  tree.file("/etc/udev/rules.d/71-quorvane.rules", "x");
  EXPECT_EQ(servingRuleFile(system), "");
  tree.file(packageRule, "x");
  EXPECT_EQ(servingRuleFile(system), packageRule);
  tree.file(ownRuleFile, "x");
  EXPECT_EQ(servingRuleFile(system), ownRuleFile);
  tree.file(ownRuleFile, "");  // masks the package's rule
  EXPECT_EQ(servingRuleFile(system), "");
}

TEST(OwnUdevRule, IsTakenByWhateverHasItsName) {
  const SystemTree tree;
  const SystemFiles system(tree.root());
  EXPECT_FALSE(isTaken(system, ownRuleFile));
  tree.link(ownRuleFile, "/nowhere");
  EXPECT_TRUE(isTaken(system, ownRuleFile));
  tree.remove(ownRuleFile);
  tree.file(ownRuleFile, "");
  EXPECT_TRUE(isTaken(system, ownRuleFile));
}

TEST(OwnUdevRule, NeedsAKeepListWhereUpdatesReplaceEtc) {
  const SystemTree tree;
  const SystemFiles system(tree.root());
  EXPECT_FALSE(needsKeepList(system));
  tree.file("/etc/os-release", "NAME=x\nID=\"steamos\"\n");
  EXPECT_TRUE(needsKeepList(system));
  tree.file("/etc/os-release", "ID=arch\nID_LIKE=steamos\n");
  EXPECT_FALSE(needsKeepList(system));
  tree.directory(keepListDirectory);
  EXPECT_TRUE(needsKeepList(system));
}

TEST(OwnUdevRule, IsLostWhereItWasKeptAndIsNotThere) {
  const SystemTree tree;
  const SystemFiles system(tree.root());
  EXPECT_FALSE(isOwnRuleLost(system));
  tree.file(keepListFile, keepListText());
  EXPECT_TRUE(isOwnRuleLost(system));
  tree.file(ownRuleFile, SystemTree::ruleText);
  EXPECT_FALSE(isOwnRuleLost(system));
}

TEST(OwnUdevRule, IsKeptByAListThatNamesItAndItself) {
  EXPECT_EQ(keepListText(), std::string(ownRuleFile) + "\n" + keepListFile + "\n");
}

}  // namespace
}  // namespace quorvane::own_udev_rule_test
