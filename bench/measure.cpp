// measure ROUNDS -- PROGRAM [ARGUMENT...] [-- PROGRAM [ARGUMENT...]]...
//
// Runs the programs alternately, ROUNDS times each, and discards their output. Prints one line for
// each: the median wall time from start to end in microseconds, and its peak memory in KiB.

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <utility>
#include <vector>

#include "bench/program_words.h"

namespace {

using Steady = std::chrono::steady_clock;

struct Program {
  quorvane::ProgramWords words;
  std::vector<double> microseconds;
  long peakKiB = 0;
};

[[noreturn]] void fail(const char* message) {
  std::fprintf(stderr, "measure: %s\n", message);
  std::exit(2);
}

void runOnce(Program& program, const posix_spawn_file_actions_t& silence) {
  const Steady::time_point begin = Steady::now();
  pid_t process = -1;
  if (::posix_spawnp(&process, program.words[0], &silence, nullptr, program.words.data(),
                     environ) != 0) {
    fail("a program does not start");
  }
  int status = 0;
  rusage usage{};
  if (::wait4(process, &status, 0, &usage) != process) fail("a program is lost");
  const Steady::time_point end = Steady::now();
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) fail("a program fails");
  program.microseconds.push_back(std::chrono::duration<double, std::micro>(end - begin).count());
  program.peakKiB = std::max(program.peakKiB, usage.ru_maxrss);
}

double median(std::vector<double> samples) {
  const auto middle = samples.begin() + static_cast<std::ptrdiff_t>(samples.size() / 2);
  std::nth_element(samples.begin(), middle, samples.end());
  return *middle;
}

}  // namespace

int main(int argc, char** argv) {
  const int rounds = argc > 2 ? std::atoi(argv[1]) : 0;
  if (rounds < 1) fail("usage: measure ROUNDS -- PROGRAM [ARGUMENT...]...");
  std::vector<Program> programs;
  try {
    for (quorvane::ProgramWords& words : quorvane::programsOf(argv + 2)) {
      programs.push_back({std::move(words), {}, 0});
    }
  } catch (const std::invalid_argument& error) {
    fail(error.what());
  }

  posix_spawn_file_actions_t silence;
  ::posix_spawn_file_actions_init(&silence);
  ::posix_spawn_file_actions_addopen(&silence, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  ::posix_spawn_file_actions_addopen(&silence, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
  // The first run of each warms the caches and is not counted.
  for (Program& program : programs) {
    runOnce(program, silence);
    program.microseconds.clear();
  }
  for (int round = 0; round < rounds; ++round) {
    for (Program& program : programs) runOnce(program, silence);
  }
  ::posix_spawn_file_actions_destroy(&silence);
  for (const Program& program : programs) {
    std::printf("%.1f %ld\n", median(program.microseconds), program.peakKiB);
  }
  return 0;
}
