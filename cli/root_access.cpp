#include "cli/root_access.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <system_error>

#include "cli/context.h"

namespace quorvane {
namespace {

constexpr const char* shell = "/bin/sh";

bool isGiven(const char* variable) {
  const char* const value = std::getenv(variable);
  return value != nullptr && *value != '\0';
}

// pkexec asks in a window, or in a terminal if there is no window; sudo only in a terminal.
std::string askerFor(const RootAccess& access, const Caller& caller) {
  std::string pkexec = systemProgram(access, "pkexec");
  std::string sudo = systemProgram(access, "sudo");
  if (caller.isGraphical && !pkexec.empty()) return pkexec;
  if (!caller.hasTerminal) return {};
  return sudo.empty() ? pkexec : sudo;
}

bool isRefusal(const std::string& asker, int status) {
  if (asker == "sudo") return status == 1;
  return asker == "pkexec" && (status == 126 || status == 127);
}

}  // namespace

int runProgram(const std::vector<std::string>& words) {
  std::vector<std::string> copies = words;
  std::vector<char*> arguments;
  arguments.reserve(copies.size() + 1);
  for (std::string& word : copies) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  ::posix_spawn_file_actions_init(&actions);
  ::posix_spawn_file_actions_adddup2(&actions, STDERR_FILENO, STDOUT_FILENO);
  pid_t process = 0;
  const int error =
      ::posix_spawn(&process, arguments[0], &actions, nullptr, arguments.data(), environ);
  ::posix_spawn_file_actions_destroy(&actions);
  if (error != 0) throw std::system_error(error, std::generic_category(), words.front());
  int status = 0;
  while (::waitpid(process, &status, 0) < 0) {
    if (errno != EINTR) throw std::system_error(errno, std::generic_category(), words.front());
  }
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

Caller Caller::ofThisProcess() {
  return {::geteuid() == 0, isGiven("WAYLAND_DISPLAY") || isGiven("DISPLAY"),
          ::isatty(STDIN_FILENO) != 0};
}

std::string systemProgram(const RootAccess& access, const std::string& name) {
  // The last two are those of NixOS.
  constexpr std::array<const char*, 6> folders{
      "/usr/bin/", "/usr/sbin/",         "/bin/",
      "/sbin/",    "/run/wrappers/bin/", "/run/current-system/sw/bin/"};
  for (const std::string folder : folders) {
    const auto place = access.root / (folder + name).substr(1);
    if (::access(place.c_str(), X_OK) == 0) return place;
  }
  return {};
}

RootRun runAsRoot(const RootAccess& access, const std::string& script,
                  const std::vector<std::string>& arguments) {
  const Caller caller = access.caller();
  std::vector<std::string> words{shell, "-c", script, "quorvane"};
  words.insert(words.end(), arguments.begin(), arguments.end());
  RootRun result;
  if (!caller.isRoot) {
    const std::string asker = askerFor(access, caller);
    if (asker.empty()) {
      throw CommandError("fileFailed",
                         "That takes root, and there is no way to ask for it here: neither pkexec "
                         "in a graphical session nor sudo on a terminal");
    }
    words.insert(words.begin(), asker);
    result.asker = std::filesystem::path(asker).filename();
  }
  result.status = access.run(words);
  result.isAllowed = !isRefusal(result.asker, result.status);
  return result;
}

}  // namespace quorvane
