#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "support/unique_fd.h"
#include "support/version.h"
#include "tests/cli/preset_fixture.h"

namespace quorvane {
namespace {

// The built program as a child process.
class Program {
 public:
  // Starts it with the words of a line. `interrupted`: a SIGINT is pending from the start.
  // `results`: the file that standard output goes to.
  explicit Program(const std::string& line, bool interrupted = false, const char* results = nullptr)
      : Program(wordsOf(line), interrupted, results) {}
  explicit Program(std::vector<std::string> words, bool interrupted = false,
                   const char* results = nullptr)
      : process_(start(std::move(words), interrupted, results)) {
    out_.write.reset();
    err_.write.reset();
  }

  // Waits for the next line of its standard output.
  std::string line() {
    std::string text;
    for (char c = 0; ::read(out_.read.get(), &c, 1) == 1 && c != '\n';) text += c;
    return text;
  }

  void interrupt(int signal = SIGINT) const { ::kill(process_, signal); }

  // Kills it at once.
  void kill() const {
    interrupt(SIGKILL);
    int status = 0;
    EXPECT_EQ(::waitpid(process_, &status, 0), process_);
  }

  // Waits for its end. Returns its output without the lines that were read.
  Outcome finish() {
    // Standard error is short: it fits into its pipe while standard output is read.
    Outcome outcome{ExitStatus::failed, rest(out_.read), rest(err_.read)};
    int status = 0;
    EXPECT_EQ(::waitpid(process_, &status, 0), process_);
    EXPECT_TRUE(WIFEXITED(status)) << "ended by signal " << WTERMSIG(status);
    outcome.status = static_cast<ExitStatus>(WEXITSTATUS(status));
    return outcome;
  }

 private:
  struct Pipe {
    UniqueFd read;
    UniqueFd write;

    Pipe() {
      std::array<int, 2> ends{-1, -1};
      EXPECT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
      read = UniqueFd(ends[0]);
      write = UniqueFd(ends[1]);
    }
  };

  pid_t start(std::vector<std::string> words, bool interrupted, const char* results) const {
    words.insert(words.begin(), QUORVANECTL);
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    sigset_t interrupt;
    sigemptyset(&interrupt);
    sigaddset(&interrupt, SIGINT);

    const pid_t process = ::fork();
    if (process != 0) return process;
    ::dup2(results == nullptr ? out_.write.get() : ::open(results, O_WRONLY), STDOUT_FILENO);
    ::dup2(err_.write.get(), STDERR_FILENO);
    ::sigprocmask(interrupted ? SIG_BLOCK : SIG_UNBLOCK, &interrupt, nullptr);
    if (interrupted) ::kill(::getpid(), SIGINT);
    ::execv(arguments[0], arguments.data());
    ::_exit(127);
  }

  static std::string rest(const UniqueFd& fd) {
    std::string text;
    std::array<char, 4096> buffer{};
    for (ssize_t got = 0; (got = ::read(fd.get(), buffer.data(), buffer.size())) > 0;) {
      text.append(buffer.data(), static_cast<std::size_t>(got));
    }
    return text;
  }

  Pipe out_;
  Pipe err_;
  pid_t process_;
};

const std::string simulatedText = std::string("Simulated base: ") + simulatedName + "\n";

// Expects that the first value was written, and perhaps more, but not all.
void expectInterrupted(const Outcome& outcome, const Lines& codes) {
  EXPECT_EQ(outcome.status, ExitStatus::interrupted);
  std::size_t written = 1;
  for (const char c : outcome.out) written += c == '\n' ? 1 : 0;
  ASSERT_LT(written, codes.size());
  std::string unwritten;
  for (std::size_t i = written; i < codes.size(); ++i) unwritten += " " + codes[i];
  EXPECT_EQ(outcome.err, simulatedText + "Interrupted; not written:" + unwritten + "\n");
}

TEST(Program, ExitsWithTheStatusOfItsCommand) {
  EXPECT_EQ(Program("--version").finish(),
            (Outcome{ExitStatus::done,
                     "quorvanectl " + std::string(version()) + " (" + std::string(commit()) + ")\n",
                     ""}));
  EXPECT_EQ(Program("--simulate select 9").finish(),
            (Outcome{ExitStatus::failed, "", simulatedText + "Set 9: there are sets 1 to 5\n"}));
  EXPECT_EQ(Program("set FF").finish(),
            (Outcome{ExitStatus::wrongUsage, "",
                     "\"FF\" is not of the form CODE=VALUE, such as FF=80\n"}));
}

TEST(Program, KeepsResultsAndMessagesApart) {
  const Outcome outcome = Program("--simulate --json read").finish();
  EXPECT_EQ(outcome.status, ExitStatus::done);
  EXPECT_EQ(outcome.err, simulatedText);
  EXPECT_EQ(Json::parse(outcome.out)["tuning"]["set"], 2);
}

TEST(Program, ResultsThatCannotBeWrittenAreAFailure) {
  EXPECT_EQ(
      Program("udev-rule", false, "/dev/full").finish(),
      (Outcome{ExitStatus::failed, "", "Could not write the output: No space left on device\n"}));
  EXPECT_EQ(Program("raed", false, "/dev/full").finish().status, ExitStatus::wrongUsage);
}

TEST(Program, AnInterruptionThatWaitsAtTheStartWritesNothing) {
  EXPECT_EQ(
      Program("--simulate set FF=80 NFR=20", true).finish(),
      (Outcome{ExitStatus::interrupted, "", simulatedText + "Interrupted; not written: FF NFR\n"}));
}

TEST(Program, AnInterruptionStopsAfterTheValueInFlight) {
  const Lines codes{"SEN", "FF",  "SHO", "BLI", "FFS", "FOR", "SPR", "DPR",
                    "NDP", "NFR", "brF", "FEI", "ACP", "INT", "NIN", "FUL"};
  // Each value takes a quarter of a second, so the signal comes long before the last.
  std::string words;
  for (const std::string& code : codes) words += " " + code + (code == "SEN" ? "=540" : "=1");
  Program program("--simulate set" + words);
  EXPECT_EQ(program.line().substr(0, 12), "SEN  540 deg");
  program.interrupt();
  expectInterrupted(program.finish(), codes);
}

TEST(Program, AnInterruptionEndsTheMonitor) {
  for (const int signal : {SIGINT, SIGTERM}) {
    Program program("--simulate monitor");
    EXPECT_EQ(program.line(), std::string("arrival ") + simulatedName + " " + simulatedID);
    program.interrupt(signal);
    EXPECT_EQ(program.finish(), (Outcome{ExitStatus::done, "", simulatedText}));
  }
}

// The program with a simulated base that keeps its state.
class ProgramWithState : public testing::Test {
 protected:
  static std::string line(const std::string& command) {
    return "--simulate --simulate-state my.state --json " + command;
  }

  void SetUp() override { std::filesystem::current_path(directory_.path()); }
  void TearDown() override { std::filesystem::current_path(before_); }

  static Json values() {
    return Json::parse(Program(line("read")).finish().out)["tuning"]["values"];
  }

  const std::filesystem::path before_ = std::filesystem::current_path();
  const TemporaryDirectory directory_;
};

TEST_F(ProgramWithState, AKilledOneLosesNothingThatItReported) {
  Program program("--simulate --simulate-state my.state set SEN=540 FF=37 SHO=40 INT=6");
  EXPECT_EQ(program.line().substr(0, 12), "SEN  540 deg");
  EXPECT_EQ(program.line().substr(0, 9), "FF   37 %");
  program.kill();
  const Json kept = values();
  EXPECT_EQ(kept["SEN"], 540);
  EXPECT_EQ(kept["FF"], 37);
}

TEST_F(ProgramWithState, SeveralAtTheSameTimeUndoNothingOfEachOther) {
  const Lines words{"SEN=540 FF=37", "SHO=40 INT=6", "FEI=50 NFR=20", "DPR=30 SPR=60"};
  std::vector<std::unique_ptr<Program>> programs;
  programs.reserve(words.size());
  for (const std::string& word : words) {
    programs.push_back(std::make_unique<Program>(line("set " + word)));
  }
  for (const auto& program : programs) EXPECT_EQ(program->finish().status, ExitStatus::done);
  const Json kept = values();
  for (const auto& [code, value] : std::map<std::string, int>{{"SEN", 540},
                                                              {"FF", 37},
                                                              {"SHO", 40},
                                                              {"INT", 6},
                                                              {"FEI", 50},
                                                              {"NFR", 20},
                                                              {"DPR", 30},
                                                              {"SPR", 60}}) {
    EXPECT_EQ(kept[code], value) << code;
  }
}

// The program with its user's presets in a temporary directory.
class ProgramWithPresets : public testing::Test {
 protected:
  void SetUp() override {
    ::setenv("XDG_DATA_HOME", directory_.path().c_str(), 1);
    ::setenv("XDG_STATE_HOME", (directory_ / "state").c_str(), 1);
  }
  void TearDown() override {
    ::unsetenv("XDG_DATA_HOME");
    ::unsetenv("XDG_STATE_HOME");
  }

  TemporaryDirectory directory_;
  const PresetStore store_{directory_ / "Quorvane/simulated/presets.json"};
};

TEST_F(ProgramWithPresets, KeepsThoseOfSimulatedBasesInAFolderOfTheirOwn) {
  EXPECT_EQ(Program(Lines{"--simulate", "presets", "save", "My GT7"}).finish(),
            (Outcome{ExitStatus::done,
                     "Saved preset \"My GT7\" (16 values)\nYour presets are in " +
                         store_.fileURL().string() + "\n",
                     simulatedText}));
  EXPECT_EQ(Program(Lines{"--simulate", "presets", "show", "my gt7", "--json"}).finish(),
            (Outcome{ExitStatus::done, presetsDocument(store_.read()), simulatedText}));
  EXPECT_EQ(Program(Lines{"--simulate", "presets", "delete", "My GT7"}).finish(),
            (Outcome{ExitStatus::done, "Deleted preset \"My GT7\"\n", simulatedText}));
  EXPECT_EQ(contentOf(store_.fileURL()), "[]");
}

TEST_F(ProgramWithPresets, KeepsFormerVersionsOfThoseOfSimulatedBasesApart) {
  const std::vector<Lines> lines{{"--simulate", "presets", "save", "Mine"},
                                 {"--simulate", "presets", "delete", "Mine"},
                                 {"--simulate", "presets", "restore", "1", "--yes"}};
  for (const Lines& line : lines) EXPECT_EQ(Program(line).finish().status, ExitStatus::done);
  EXPECT_EQ(store_.read().size(), 1U);
  const auto versions = VersionFolder(directory_ / "state/Quorvane/simulated/preset-versions");
  EXPECT_EQ(versions.versions().size(), 2U);
  EXPECT_FALSE(std::filesystem::exists(directory_ / "state/Quorvane/preset-versions"));
}

TEST_F(ProgramWithPresets, RunsAtTheSameTimeLoseNothing) {
  const std::set<std::string> names{"a", "b", "c", "d", "e", "f", "g", "h", "i", "j", "k", "l"};
  std::vector<std::unique_ptr<Program>> programs;
  programs.reserve(names.size());
  for (const std::string& name : names) {
    programs.push_back(std::make_unique<Program>("--simulate presets save " + name));
  }
  for (const auto& program : programs) EXPECT_EQ(program->finish().status, ExitStatus::done);

  const auto stored = store_.read();
  std::set<std::string> found;
  for (const TuningPreset& preset : stored) found.insert(preset.name);
  EXPECT_EQ(stored.size(), names.size());
  EXPECT_EQ(found, names);
  EXPECT_EQ(contentOf(store_.fileURL()), encodePresets(stored));
  // The preset file and the lock file.
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(store_.fileURL().parent_path()), {}),
            2);
}

TEST_F(ProgramWithPresets, AnInterruptionStopsAnApplicationAfterTheValueInFlight) {
  const Lines codes{"SEN", "FF", "BLI", "FFS", "FOR", "SPR", "DPR", "NDP", "NFR", "NIN"};
  TuningPreset preset = ownPreset(firstID, "Mine");
  for (const std::string& code : codes) preset.values[code] = code == "SEN" ? 540 : 1;
  store_.save({preset});
  Program program("--simulate presets apply Mine");
  EXPECT_EQ(program.line().substr(0, 12), "SEN  540 deg");
  program.interrupt();
  expectInterrupted(program.finish(), codes);
}

TEST_F(ProgramWithPresets, AnInterruptionThatWaitsAtTheStartAppliesNothing) {
  store_.save({ownPreset(firstID, "Mine", {{"FF", 80}, {"NFR", 20}})});
  EXPECT_EQ(
      Program("--simulate presets apply Mine", true).finish(),
      (Outcome{ExitStatus::interrupted, "", simulatedText + "Interrupted; not written: FF NFR\n"}));
}

TEST_F(ProgramWithPresets, AnExportThatCannotBeWrittenToStandardOutputIsAFailure) {
  EXPECT_EQ(
      Program("presets export -", false, "/dev/full").finish(),
      (Outcome{ExitStatus::failed, "", "Could not write the output: No space left on device\n"}));
}

}  // namespace
}  // namespace quorvane
