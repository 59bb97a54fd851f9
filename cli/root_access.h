#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace quorvane {

// Runs a program and blocks until it ends. `words` are its absolute path and its arguments; its
// standard output goes to standard error. Returns the exit status, or -1 if a signal ended it.
// Throws std::system_error if it cannot be started.
using ProgramRunner = std::function<int(const std::vector<std::string>& words)>;
int runProgram(const std::vector<std::string>& words);

// The facts about the caller of this program that matter for becoming root.
struct Caller {
  bool isRoot = false;
  bool isGraphical = false;  // in a session with a display
  bool hasTerminal = false;  // standard input: can ask for a password

  static Caller ofThisProcess();
};

// Access to the machine as root; tests use a folder and fake programs instead.
struct RootAccess {
  std::filesystem::path root = "/";
  ProgramRunner run = runProgram;
  std::function<Caller()> caller = Caller::ofThisProcess;
};

// The path of a program in the system's own folders, the first found; empty if none has it.
// Ignores PATH and the rest of the environment.
std::string systemProgram(const RootAccess& access, const std::string& name);

// The result of running a script as root.
struct RootRun {
  bool isAllowed = true;  // false: nothing ran; the password or permission was refused
  std::string asker;      // "pkexec" or "sudo"; empty: the caller is root already
  int status = 0;         // of the script; -1 when a signal ended it
};

// Runs a POSIX shell script as root, with its arguments. Asks for the permission once if needed:
// with pkexec in a graphical session, else with sudo. Only programs of the system run as root,
// never this one. The exit statuses 1 (with sudo), 126 and 127 (with pkexec) count as a refusal, so
// scripts must not use them. Blocks until the script has ended. Throws CommandError when there is
// no way to become root, and std::system_error.
RootRun runAsRoot(const RootAccess& access, const std::string& script,
                  const std::vector<std::string>& arguments);

}  // namespace quorvane
