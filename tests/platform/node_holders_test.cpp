#include "platform/node_holders.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <map>
#include <string>
#include <vector>

#include "tests/platform/system_tree.h"
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

TEST(NodeHolders, AreFoundWhereTheirViewHasTheNodeAtAnotherPlace) {
  const SystemTree tree;
  tree.addOpenBase();
  tree.addProcess(200, "game", "/newroot/dev/hidraw3");
  EXPECT_EQ(holders(tree), "200 game; all");
}

TEST(NodeHolders, OfOtherFilesAreThoseOfTheSamePath) {
  const std::string file = "/dev/shm/mine/node";
  const SystemTree tree;
  tree.addProcess(200, "game", "/dev/shm/other/node");
  const SystemFiles system(tree.root());
  EXPECT_EQ(NodeHolders(system, self, {file}).of(file), std::vector<NodeHolder>{});
  tree.addProcess(201, "same", file);
  EXPECT_EQ(NodeHolders(system, self, {file}).of(file),
            (std::vector<NodeHolder>{{201, "same", false, false, false}}));
}

TEST(NodeHolders, TellWhoHasItsTurnAtWritingAndWhetherItIsStopped) {
  const std::string other = "lock:\t1: OFDLCK ADVISORY  READ -1 00:05:333 1 1\n";
  const std::string lock = "lock:\t2: OFDLCK ADVISORY  WRITE -1 00:05:333 0 0\n";
  struct Case {
    std::string facts;
    std::string status;
    bool hasWriteLock;
    bool isStopped;
  };
  const std::vector<Case> cases{
      {"pos:\t0\n" + other, "200 (game) S 1 2", false, false},
      {other + lock, "200 (game) S 1 2", true, false},
      {other + lock, "200 (a) T (b) T 1 2", true, true},
      {other + lock, "200 (game) t 1 2", true, true},
      {"lock:\t1: OFDLCK ADVISORY  WRITE -1 00:05:333 2 2\n", "200 (a) T ) S 1", false, false},
      {"lock:\t1: FLOCK  ADVISORY  WRITE 200 00:05:333 0 EOF\n", "", false, false},
      {"lock:\n", "200 (game)", false, false},
  };
  for (const Case& each : cases) {
    const SystemTree tree;
    tree.addOpenBase();
    tree.addProcess(200, "game", SystemTree::node);
    tree.file("/proc/200/fdinfo/7", each.facts);
    tree.file("/proc/200/stat", each.status);
    const SystemFiles system(tree.root());
    EXPECT_EQ(NodeHolders(system, self, {SystemTree::node}).of(SystemTree::node),
              (std::vector<NodeHolder>{{200, "game", false, each.hasWriteLock, each.isStopped}}))
        << each.facts << each.status;
  }
}

// A machine with all of its processes visible, including this one (`self`), which has the node
// open.
class WholeMachine : public SystemTree {
 public:
  WholeMachine() {
    addOpenBase();
    addProcess(1, "init", "/dev/null");
    addProcess(self, "quorvane", node);
    link("/proc/self/ns/pid", "pid:[4026531836]");
  }

  bool mayOthersHaveTheNode() const {
    const SystemFiles system(root());
    return NodeHolders(system, self, {node}).mayOthersHave(node);
  }

  // Adds a process of `user` with the node open, whose descriptors cannot be read.
  void addHidden(int process, unsigned user) const {
    addProcess(process, "hidden", node);
    EXPECT_EQ(::chmod(place("/proc/" + std::to_string(process) + "/fd").c_str(), 0), 0);
    EXPECT_EQ(::chown(place("/proc/" + std::to_string(process)).c_str(), user, user), 0);
  }
};

TEST(NodeHolders, OnesOwnOpeningIsNobodyElses) {
  EXPECT_FALSE(WholeMachine().mayOthersHaveTheNode());
}

TEST(NodeHolders, AnotherOpeningIsSomebodyElsesWhoseverItIs) {
  const WholeMachine machine;
  machine.link("/proc/100/fd/8", SystemTree::node);
  EXPECT_TRUE(machine.mayOthersHaveTheNode());
  machine.remove("/proc/100/fd/8");
  EXPECT_FALSE(machine.mayOthersHaveTheNode());
  machine.addProcess(200, "game", SystemTree::node);
  EXPECT_TRUE(machine.mayOthersHaveTheNode());
}

TEST(NodeHolders, ALockIsSomebodyElsesWhereverItsProcessIs) {
  const WholeMachine machine;
  machine.file("/proc/locks", machine.lockLine(self, "READ "));
  EXPECT_FALSE(machine.mayOthersHaveTheNode());
  machine.file("/proc/locks", machine.lockLine(0, "READ "));
  EXPECT_TRUE(machine.mayOthersHaveTheNode());
}

TEST(NodeHolders, WhereOnlySomeProcessesAreShownSomebodyMayHaveIt) {
  const WholeMachine container;
  container.remove("/proc/self/ns/pid");
  container.link("/proc/self/ns/pid", "pid:[4026532000]");
  EXPECT_TRUE(container.mayOthersHaveTheNode());
  const WholeMachine ownOnly;
  ownOnly.remove("/proc/1");
  EXPECT_TRUE(ownOnly.mayOthersHaveTheNode());
}

// Needs root, to change the owner of files.
TEST(NodeHolders, AnotherPersonWhoCannotBeLookedIntoMayHaveIt) {
  if (::geteuid() != 0) return;
  const std::map<unsigned, bool> users{
      {0, false},    {1, false},     {999, false},   {1000, true},          {60000, true},
      {61183, true}, {61184, false}, {65519, false}, {ordinaryUser, false}, {100000, true},
  };
  for (const auto& [user, mayHaveIt] : users) {
    const WholeMachine machine;
    machine.addHidden(300, user);
    const AsOrdinaryUser asUser;
    EXPECT_EQ(machine.mayOthersHaveTheNode(), mayHaveIt) << user;
  }
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
