#pragma once

#include <functional>
#include <optional>
#include <random>
#include <string>

#include "tests/support/child_process.h"
#include "tests/support/file_calls.h"

namespace quorvane {

// Runs commands as child processes, one after the other. Kills every tenth one at a random system
// call.
class KilledCommands {
 public:
  explicit KilledCommands(unsigned seed) : seed_(seed), random_(seed) {}

  // Whether the command ran to completion.
  bool run(const std::function<void()>& command) {
    const bool isKilled = ++number_ % 10 == 0;
    const std::size_t last = std::uniform_int_distribution<std::size_t>(0, 30)(random_);
    return inChildProcess([&]() -> std::string {
             std::optional<FileCalls> calls;
             if (isKilled) calls.emplace(FileCalls::dieAt(last));
             command();
             return "done";
           }) == "done";
  }

  // Runs a command for each of the names "SEED-0", "SEED-1" and so on. Returns the names of the
  // commands that ran to completion, each followed by a space.
  std::string runEach(int count, const std::function<void(const std::string& name)>& command) {
    std::string done;
    for (int i = 0; i < count; ++i) {
      const std::string name = std::to_string(seed_) + "-" + std::to_string(i);
      if (run([&] { command(name); })) done += name + " ";
    }
    return done;
  }

 private:
  const unsigned seed_;
  std::mt19937 random_;
  int number_ = 0;
};

}  // namespace quorvane
