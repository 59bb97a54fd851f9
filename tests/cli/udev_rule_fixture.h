#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "cli/root_access.h"
#include "platform/own_udev_rule.h"
#include "tests/cli/attached_nodes.h"
#include "tests/cli/command_line_fixture.h"
#include "tests/platform/system_tree.h"

namespace quorvane {

// The command line on a machine of its own, in a folder: its /etc, its udevadm, which only says
// what it is told, and ways to become root, which run what they are given as whoever tests.
class UdevRuleTest : public CommandLineTest {
 protected:
  UdevRuleTest();

  // Gives the machine a program, which is one of this machine: files in a folder for tests may not
  // be run everywhere.
  void addProgram(const std::string& name, const std::string& program = "/bin/true") const;

  // A base at /dev/hidraw3, which this user may open or not.
  SimulatedDevice& attachNode(bool opens);

  Outcome runOnTree(const std::string& line);

  // The program that asked for root in the last run; empty: none did.
  std::string asker() const;

  Lines udevadmLines() const;
  std::string contentAt(const std::string& path) const;
  bool isThere(const std::string& path) const;

  SystemTree tree_;
  AttachedNodes nodes_;
  Caller caller_{false, false, true};
  std::vector<Lines> ran_;       // what was run, with its words
  std::optional<int> endsWith_;  // nothing is run then
  std::function<void()> afterwards_ = [] {};

 private:
  int runAsThisUser(const Lines& words);
};

}  // namespace quorvane
