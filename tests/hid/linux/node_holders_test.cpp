#include "hid/linux/node_holders.h"

#include <gtest/gtest.h>

#include "tests/hid/linux/system_tree.h"
#include "tests/support/ordinary_user.h"

namespace quorvane::node_holders_test {
namespace {

constexpr int self = 100;

std::string holders(const SystemTree& tree) {
  const SystemFiles system(tree.root());
  const NodeHolders all(system, self, {SystemTree::node});
  std::string text;
  for (const NodeHolder& holder : all.of(SystemTree::node)) {
    text += std::to_string(holder.process) + " " + holder.program +
            (holder.isExclusive ? " exclusive; " : "; ");
  }
  return text + (all.areAllKnown() ? "all" : "not all");
}

TEST(FileLocks, AreThoseOnWholeFilesThatAreHeld) {
  const auto locks = parseFileLocks(
      "1: POSIX  ADVISORY  WRITE 700 00:05:331 0 EOF\n"
      "2: FLOCK  ADVISORY  READ  701 00:05:332 0 EOF\n"
      "2: -> FLOCK  ADVISORY  WRITE 702 00:05:332 0 EOF\n"
      "3: FLOCK  ADVISORY  WRITE 703 fd:1a:4294967296 0 EOF\n"
      "4: FLOCK  ADVISORY  WRITE x 00:05:332 0 EOF\n"
      "5: FLOCK  ADVISORY  WRITE 704 00:05 0 EOF\n"
      "6: FLOCK  ADVISORY  WRITE 705\n"
      "garbage\n");
  EXPECT_EQ(locks,
            (std::vector<FileLock>{{701, false, 0, 5, 332}, {703, true, 0xFD, 0x1A, 4294967296}}));
}

TEST(NodeHolders, AreTheOtherProcessesThatHaveItOpen) {
  const SystemTree tree;
  tree.addOpenBase();
  EXPECT_EQ(holders(tree), "all");
  tree.addProcess(self, "quorvane", SystemTree::node);
  tree.addProcess(200, "game", SystemTree::node);
  tree.addProcess(150, "other", "/dev/hidraw30");
  tree.file("/proc/self/comm", "no process");
  EXPECT_EQ(holders(tree), "200 game; all");
}

TEST(NodeHolders, TheOneWithALockKeepsItToItself) {
  const SystemTree tree;
  tree.addOpenBase();
  tree.addProcess(200, "game", SystemTree::node);
  tree.file("/proc/locks", tree.lockLine(200, "WRITE"));
  EXPECT_EQ(holders(tree), "200 game exclusive; all");
}

TEST(NodeHolders, LocksTellOfProcessesThatCannotBeLookedInto) {
  const SystemTree tree;
  tree.addOpenBase();
  tree.addProcess(300, "hidden", SystemTree::node);
  ASSERT_EQ(::chmod(tree.place("/proc/300/fd").c_str(), 0), 0);
  tree.file("/proc/locks", tree.lockLine(300, "READ ") + tree.lockLine(self, "READ "));
  const AsOrdinaryUser user;
  EXPECT_EQ(holders(tree), "300 hidden; not all");
}

TEST(NodeHolders, OfNoNodesLookAtNothing) {
  const SystemTree tree;
  tree.addProcess(300, "hidden", SystemTree::node);
  ASSERT_EQ(::chmod(tree.place("/proc/300/fd").c_str(), 0), 0);
  const AsOrdinaryUser user;
  const SystemFiles system(tree.root());
  EXPECT_TRUE(NodeHolders(system, self, {}).areAllKnown());
}

}  // namespace
}  // namespace quorvane::node_holders_test
