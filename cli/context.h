#pragma once

#include <cstdint>
#include <cstdio>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "cli/interruption.h"
#include "cli/root_access.h"
#include "cli/user_presets.h"
#include "hid/platform.h"
#include "history/history.h"
#include "protocol/commands.h"

namespace quorvane {

// The file name that means standard output.
inline constexpr std::string_view standardOutput = "-";

// The file name that means standard input where a file is read.
inline constexpr std::string_view standardInput = "-";

// The exit status of the program.
enum class ExitStatus : int { done = 0, failed = 1, wrongUsage = 2, interrupted = 130 };

// A wrong word on the command line. The program prints the message and ends with
// ExitStatus::wrongUsage.
class UsageError : public std::runtime_error {
 public:
  // `likely` are the words to suggest in place of the command's arguments; empty for none.
  explicit UsageError(const std::string& message, std::vector<std::string> likely = {})
      : std::runtime_error(message), likely_(std::move(likely)) {}

  const std::vector<std::string>& likely() const { return likely_; }

 private:
  std::vector<std::string> likely_;
};

// A failure of the base or the operation, with a message of the command. `kind` is one of
// errorJson's.
class CommandError : public std::runtime_error {
 public:
  CommandError(std::string_view kind, const std::string& message)
      : std::runtime_error(message), kind_(kind) {}

  const std::string& kind() const { return kind_; }

 private:
  std::string kind_;
};

// The program's name, as in the history.
inline constexpr const char* programName = "quorvanectl";

// The dependencies of the commands; tests inject their own.
struct World : Platform {
  std::FILE* out = stdout;  // results
  std::FILE* err = stderr;  // messages
  std::function<Interruption()> interruption = Interruption::catchSignals;
  std::function<const PresetStore&()> presets = userPresetStore;  // called only when needed
  std::function<const PresetStore&()> simulatedPresets = simulatedPresetStore;  // for --simulate
  RootAccess rootAccess = {};
  History history = History::ofUser(programName);
  History simulatedHistory = History::ofSimulation(programName);  // for --simulate
};

// The options that all commands share.
struct GlobalOptions {
  std::string device;                    // an id, a node's path or a serial number; empty: any
  std::optional<std::uint8_t> reportID;  // overrides the descriptor's
  std::optional<TuningLayout> layout;
  bool json = false;
};

struct CommandContext {
  const World& world;
  const GlobalOptions& options;
};

}  // namespace quorvane
