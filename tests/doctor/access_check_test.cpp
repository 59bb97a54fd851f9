#include "doctor/access_check.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

constexpr std::uint32_t user = 1000;
constexpr std::uint32_t ownGroup = 1000;
constexpr std::uint32_t plugdev = 46;

UdevRuleFacts rule(const char* file) {
  UdevRuleFacts facts;
  facts.rule = {file, 3, ""};
  return facts;
}

// A node that its user may open, and the finding that says why.
struct Grant {
  void (*make)(MachineFacts& machine, NodeFacts& node);
  std::string finding;
};

Verdict judged(void (*make)(MachineFacts&, NodeFacts&), bool mayOpen) {
  DoctorFacts facts;
  facts.machine.hasUdev = true;
  facts.machine.user.id = user;
  facts.machine.user.groups = {ownGroup};
  facts.machine.seatedUsers = {user};
  NodeFacts node;
  node.path = "/dev/hidraw3";
  node.exists = true;
  node.mode = 0660;
  node.groupName = "root";
  node.mayRead = node.mayWrite = mayOpen;
  make(facts.machine, node);
  DevicePath path;
  const HIDFacts hid;
  path.hid = &hid;
  path.node = &node;
  return judgeAccess(facts, path);
}

TEST(AccessCheck, TellsWhoGrantsIt) {
  const std::vector<Grant> grants{
      {[](MachineFacts& machine, NodeFacts&) { machine.user.id = 0; }, "you are root"},
      {[](MachineFacts&, NodeFacts& node) { node.owner = user; }, "you own it"},
      {[](MachineFacts&, NodeFacts& node) {
         node.accessList = {{false, user, true, true}};
       },
       "its access list names you"},
      {[](MachineFacts&, NodeFacts& node) {
         node.accessList = {{false, user, true, true}};
         node.rules = {rule("/lib/udev/rules.d/70-quorvane.rules")};
         node.rules[0].tagsForSeat = true;
       },
       "its access list names you (/lib/udev/rules.d/70-quorvane.rules, line 3)"},
      {[](MachineFacts& machine, NodeFacts& node) {
         machine.user.groups.push_back(plugdev);
         node.group = plugdev;
         node.groupName = "plugdev";
         node.rules = {rule("/etc/udev/rules.d/99-a.rules")};
         node.rules[0].group = "plugdev";
       },
       "you are in its group plugdev (/etc/udev/rules.d/99-a.rules, line 3)"},
      {[](MachineFacts&, NodeFacts& node) {
         node.accessList = {{true, ownGroup, true, true}};
       },
       "its access list names a group of yours"},
      {[](MachineFacts&, NodeFacts& node) {
         node.mode = 0666;
         node.rules = {rule("/etc/udev/rules.d/99-a.rules")};
         node.rules[0].mode = 0666;
       },
       "everyone may (/etc/udev/rules.d/99-a.rules, line 3)"},
  };
  for (const Grant& grant : grants) {
    const Verdict verdict = judged(grant.make, true);
    EXPECT_EQ(verdict.outcome, CheckOutcome::passed);
    EXPECT_EQ(verdict.finding, "you may read and write /dev/hidraw3: " + grant.finding);
  }
}

TEST(AccessCheck, ARuleForAGroupHelpsItsMembersOnly) {
  const auto forGroup = [](MachineFacts&, NodeFacts& node) {
    node.group = plugdev;
    node.groupName = "plugdev";
    node.rules = {rule("/etc/udev/rules.d/99-a.rules")};
    node.rules[0].group = "plugdev";
  };
  const Verdict verdict = judged(forGroup, false);
  EXPECT_EQ(verdict.finding,
            "/etc/udev/rules.d/99-a.rules, line 3 gives /dev/hidraw3 to the group plugdev, which "
            "you are not in");
  EXPECT_EQ(verdict.nextStep, "Join the group, then log in again: sudo usermod -aG plugdev $USER");
}

TEST(AccessCheck, ARuleForAGroupMayNotHaveRunYet) {
  const Verdict verdict = judged(
      [](MachineFacts&, NodeFacts& node) {
        node.rules = {rule("/etc/udev/rules.d/99-a.rules")};
        node.rules[0].group = "plugdev";
      },
      false);
  EXPECT_EQ(verdict.finding,
            "/etc/udev/rules.d/99-a.rules, line 3 gives /dev/hidraw3 to the group plugdev, but has "
            "not done so yet");
}

TEST(AccessCheck, ReadingAloneIsNotEnough) {
  const Verdict verdict =
      judged([](MachineFacts&, NodeFacts& node) { node.mayRead = true; }, false);
  EXPECT_EQ(verdict.outcome, CheckOutcome::failed);
}

}  // namespace
}  // namespace quorvane
