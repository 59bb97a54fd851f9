#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace quorvane {

// Runs a program and waits for its end. The words are its absolute path and its arguments; what it
// prints goes to standard error. The exit status, or -1 when a signal ended it. Throws
// std::system_error when it cannot be started.
using ProgramRunner = std::function<int(const std::vector<std::string>& words)>;
int runProgram(const std::vector<std::string>& words);

// Who runs this program, as far as it matters for becoming root.
struct Caller {
  bool isRoot = false;
  bool isGraphical = false;  // in a session that has a display
  bool hasTerminal = false;  // and can be asked for a password there

  static Caller ofThisProcess();
};

// The machine whose settings root changes; tests have a folder in its place.
struct RootAccess {
  std::filesystem::path root = "/";
  ProgramRunner run = runProgram;
  std::function<Caller()> caller = Caller::ofThisProcess;
};

// The first of the system's own folders for programs that has one of this name; empty: none has.
// The environment has no say.
std::string systemProgram(const RootAccess& access, const std::string& name);

// What became of running something as root.
struct RootRun {
  bool isAllowed = true;  // else nothing was run: the password or the permission was refused
  std::string asker;      // "pkexec" or "sudo"; empty: it was root already
  int status = 0;         // of what was run; -1 when a signal ended it
};

// Runs a script of the POSIX shell as root, with its arguments, and asks for the permission once
// where that is needed: through pkexec in a graphical session, else through sudo. Only programs of
// the system run as root, never this one. A script that ends with the status 1, 126 or 127 is taken
// for a refusal. Blocks until it has ended. Throws CommandError when there is no way to become
// root, and std::system_error.
RootRun runAsRoot(const RootAccess& access, const std::string& script,
                  const std::vector<std::string>& arguments);

}  // namespace quorvane
