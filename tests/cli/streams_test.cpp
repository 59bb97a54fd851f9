#include <fcntl.h>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <csignal>
#include <deque>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "support/unique_fd.h"
#include "tests/cli/preset_fixture.h"
#include "tests/support/child_process.h"

namespace quorvane {
namespace {

enum class Stream { in, out, err };
enum class Damage { none, closed, full, broken };

constexpr std::array damages{Damage::closed, Damage::full, Damage::broken};
constexpr std::array<const char*, 3> streamNames{"stdin", "stdout", "stderr"};
constexpr std::array<const char*, 4> damageNames{"", "closed", "on /dev/full", "a broken pipe"};

// One stream that is damaged, or none.
struct Condition {
  Stream stream = Stream::in;
  Damage damage = Damage::none;

  bool has(Stream which) const { return stream == which && damage != Damage::none; }
  std::string name() const {
    if (damage == Damage::none) return "undamaged";
    return fmt::format("{} {}", streamNames.at(static_cast<std::size_t>(stream)),
                       damageNames.at(static_cast<std::size_t>(damage)));
  }
};

std::vector<Condition> conditions() {
  std::vector<Condition> all;
  for (const Stream stream : {Stream::in, Stream::out, Stream::err}) {
    for (const Damage damage : damages) all.push_back({stream, damage});
  }
  return all;
}

// A run of the built program in a temporary directory, with its user's presets there.
class DamagedRun {
 public:
  DamagedRun(std::vector<std::string> words, Condition condition, bool interrupted)
      : condition_(condition) {
    prepareHome();
    start(std::move(words), interrupted);
  }

  const Condition& condition() const { return condition_; }

  // The exit status; none when a signal ended it.
  std::optional<int> finish() const {
    int status = 0;
    EXPECT_EQ(::waitpid(process_, &status, 0), process_);
    return WIFEXITED(status) ? std::optional(WEXITSTATUS(status)) : std::nullopt;
  }

  std::string out() const { return contentOf(directory_ / "out"); }
  std::string err() const { return contentOf(directory_ / "err"); }
  pid_t process() const { return process_; }

 private:
  void start(std::vector<std::string> words, bool interrupted) {
    process_ = ::fork();
    if (process_ == 0) become(std::move(words), interrupted);
  }

  void prepareHome() const {
    for (const char* folder : {"Quorvane", "Quorvane/simulated"}) {
      std::filesystem::create_directories(directory_ / folder);
      putFile(directory_ / folder / "presets.json",
              encodePresets({ownPreset(firstID, "Mine", {{"FF", 40}})}));
    }
    putFile(directory_ / "one.quorvane", encodePresets({ownPreset(secondID, "Theirs")}));
  }

  [[noreturn]] void become(std::vector<std::string> words, bool interrupted) const {
    words.insert(words.begin(), QUORVANECTL);
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    ::setenv("XDG_DATA_HOME", directory_.path().c_str(), 1);
    ::setenv("XDG_STATE_HOME", (directory_ / "state").c_str(), 1);
    if (::chdir(directory_.path().c_str()) != 0) ::_exit(126);
    if (interrupted) {
      sigset_t interrupt;
      sigemptyset(&interrupt);
      sigaddset(&interrupt, SIGINT);
      ::sigprocmask(SIG_BLOCK, &interrupt, nullptr);
      ::kill(::getpid(), SIGINT);
    }
    ::dup2(::open("/dev/null", O_RDONLY | O_CLOEXEC), STDIN_FILENO);
    ::dup2(::open("out", O_WRONLY | O_CREAT | O_CLOEXEC, 0666), STDOUT_FILENO);
    ::dup2(::open("err", O_WRONLY | O_CREAT | O_CLOEXEC, 0666), STDERR_FILENO);
    damage();
    ::execv(arguments[0], arguments.data());
    ::_exit(127);
  }

  void damage() const {
    const int descriptor = static_cast<int>(condition_.stream);
    Pipe pipe;
    switch (condition_.damage) {
      case Damage::none:
        break;
      case Damage::closed:
        ::close(descriptor);
        break;
      case Damage::full:
        ::dup2(::open("/dev/full", O_RDWR | O_CLOEXEC), descriptor);
        break;
      case Damage::broken:
        ::dup2((condition_.stream == Stream::in ? pipe.reading : pipe.writing).get(), descriptor);
        break;
    }
  }

  TemporaryDirectory directory_;
  Condition condition_;
  pid_t process_ = -1;
};

struct StreamsCase {
  std::vector<std::string> words;
  int status = 0;
  bool hasResults = true;
  bool isInterrupted = false;
};

const std::vector<StreamsCase>& streamsCases() {
  static const std::vector<StreamsCase> cases{
      {{"--simulate", "devices"}},
      {{"--simulate", "read"}},
      {{"--simulate", "--json", "read"}},
      {{"explain", "NDP"}},
      {{"--json", "explain", "NDP"}},
      {{"--simulate", "set", "FF=80", "NFR=20"}},
      {{"--simulate", "set", "FF=80", "NFR=20", "--dry-run"}},
      {{"--simulate", "set", "FF=120", "NFR=20"}, 1},
      {{"--simulate", "--json", "set", "FF=120"}, 1},
      {{"--simulate", "set", "FF=80"}, 130, false, true},
      {{"--simulate", "select", "3"}},
      {{"--simulate", "mode"}},
      {{"--simulate", "mode", "advanced"}},
      {{"--simulate", "rotation", "540"}},
      {{"--simulate", "raw", "ff", "03", "02"}},
      {{"--simulate", "factory-reset"}, 2, false},
      {{"--simulate", "factory-reset", "--yes"}},
      {{"--simulate", "usb-reset"}},
      {{"--simulate", "monitor"}, 0, false, true},
      {{"--simulate", "doctor", "--report", "report.txt"}},
      {{"--simulate", "doctor", "--report", "-"}},
      {{"udev-rule"}},
      {{"presets", "list"}},
      {{"presets", "show", "Mine"}},
      {{"presets", "show", "nosuch"}, 2, false},
      {{"--simulate", "presets", "apply", "Mine"}},
      {{"--simulate", "presets", "save", "Another"}},
      {{"presets", "delete", "Mine"}},
      {{"presets", "import", "one.quorvane"}},
      {{"presets", "import", "nosuch.quorvane"}, 1, false},
      {{"presets", "export", "all.json"}},
      {{"presets", "export", "-"}},
      {{"--simulate", "presets", "share", "base.quorvane"}},
      {{"presets", "share", "-", "--preset", "Mine"}},
      {{"--version"}},
      {{"--help"}},
      {{"set", "--help"}},
      {{"nosuch"}, 2, false},
      {{"complete", ""}},
  };
  return cases;
}

// A success becomes a failure if its results could not be written. Nothing else changes the status.
int wantedStatus(const StreamsCase& one, const Condition& condition) {
  return one.status == 0 && one.hasResults && condition.has(Stream::out) ? 1 : one.status;
}

std::size_t lineCount(const std::string& text) {
  return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

class DamagedStreams : public testing::TestWithParam<StreamsCase> {};

TEST_P(DamagedStreams, ChangeNothingButWhatTheyCarry) {
  const StreamsCase& one = GetParam();
  std::deque<DamagedRun> runs;
  for (const Condition& condition : conditions()) {
    runs.emplace_back(one.words, condition, one.isInterrupted);
  }
  const DamagedRun undamaged(one.words, {}, one.isInterrupted);
  ASSERT_EQ(undamaged.finish(), one.status) << undamaged.err();
  for (const DamagedRun& run : runs) {
    const Condition& condition = run.condition();
    EXPECT_EQ(run.finish(), wantedStatus(one, condition)) << condition.name() << "\n" << run.err();
    if (!condition.has(Stream::out)) {
      EXPECT_EQ(lineCount(run.out()), lineCount(undamaged.out())) << condition.name();
    }
  }
}

std::string caseName(const testing::TestParamInfo<StreamsCase>& which) {
  std::string name = fmt::format("{}_{}", which.index, fmt::join(which.param.words, "_"));
  std::erase_if(name, [](unsigned char c) { return std::isalnum(c) == 0 && c != '_'; });
  return name;
}

INSTANTIATE_TEST_SUITE_P(Commands, DamagedStreams, testing::ValuesIn(streamsCases()), caseName);

TEST(StreamsOfTheProgram, SaysWhyResultsCouldNotBeWritten) {
  const std::vector<std::pair<Damage, std::string>> cases{
      {Damage::closed, "Bad file descriptor"},
      {Damage::full, "No space left on device"},
      {Damage::broken, "Broken pipe"},
  };
  for (const auto& [damage, reason] : cases) {
    const DamagedRun run({"presets", "list"}, {Stream::out, damage}, false);
    EXPECT_EQ(run.finish(), 1);
    EXPECT_EQ(run.err(), "Could not write the output: " + reason + "\n");
  }
}

TEST(StreamsOfTheProgram, AMonitorThatNobodyReadsEnds) {
  for (const Damage damage : damages) {
    const DamagedRun run({"--simulate", "monitor"}, {Stream::out, damage}, false);
    EXPECT_EQ(run.finish(), 1);
  }
}

}  // namespace
}  // namespace quorvane
