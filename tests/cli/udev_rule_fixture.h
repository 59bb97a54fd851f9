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

// The command line on a machine in a temporary directory: with its own /etc; with a udevadm that
// only logs its arguments; with ways to become root that run commands as the current user.
class UdevRuleTest : public CommandLineTest {
 protected:
  UdevRuleTest();

  // Adds a program, as a link to one of the real machine: a temporary directory may be mounted
  // noexec.
  void addProgram(const std::string& name, const std::string& program = "/bin/true") const;

  // Attaches a base with the node /dev/hidraw3. `opens`: whether this user may open it.
  FaultyDevice& attachNode(bool opens);

  Outcome runOnTree(const std::string& line);

  // The program that the last run used to become root; empty: none.
  std::string asker() const;

  Lines udevadmLines() const;
  std::string contentAt(const std::string& path) const;
  bool isThere(const std::string& path) const;

  SystemTree tree_;
  AttachedNodes nodes_;
  Caller caller_{false, false, true};
  std::vector<Lines> ran_;       // the command lines that were run
  std::optional<int> endsWith_;  // if set, the exit status, and no command is run
  std::function<void()> afterwards_ = [] {};

 private:
  int runAsThisUser(const Lines& words);
};

}  // namespace quorvane
