#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>
#include <set>
#include <string>

#include "tests/app/model_fixture.h"

namespace quorvane {
namespace {

using P = TuningParameter;

// RAII: captures what the process writes to standard error.
class CapturedStandardError {
 public:
  CapturedStandardError() : before_(::dup(STDERR_FILENO)), file_(std::tmpfile()) {
    std::fflush(stderr);
    ::dup2(::fileno(file_), STDERR_FILENO);
  }
  ~CapturedStandardError() {
    std::fflush(stderr);
    ::dup2(before_, STDERR_FILENO);
    ::close(before_);
    std::fclose(file_);
  }
  CapturedStandardError(const CapturedStandardError&) = delete;
  CapturedStandardError& operator=(const CapturedStandardError&) = delete;

  std::string text() {
    std::fflush(stderr);
    std::string all;
    std::rewind(file_);
    std::array<char, 256> block{};
    while (std::fgets(block.data(), block.size(), file_) != nullptr) all += block.data();
    return all;
  }

 private:
  const int before_;
  std::FILE* const file_;
};

class ModelLog : public ModelTest {
 protected:
  void mirror(const std::string& value) { mirror_.emplace("QUORVANE_LOG_STDERR", value); }

 private:
  std::optional<ScopedVariable> mirror_;
};

TEST_F(ModelLog, AnEntryHasATextATimeAndAnIDOfItsOwn) {
  startWithoutBase();
  const auto before = WallClock::now();
  model().refresh();
  model().stage(P::forceFeedback, 80);
  model().discardStaged();
  const auto after = WallClock::now();

  const auto& log = model().log();
  ASSERT_EQ(log.size(), 2U);
  EXPECT_EQ(log[0].text, "No base connected");
  EXPECT_TRUE(log[0].isError);
  EXPECT_EQ(log[1].text, "Discarded 1 unsaved change");
  EXPECT_FALSE(log[1].isError);
  EXPECT_NE(log[0].id, log[1].id);
  EXPECT_LE(before, log[0].time);
  EXPECT_LE(log[0].time, log[1].time);
  EXPECT_LE(log[1].time, after);
}

TEST_F(ModelLog, KeepsTheNewestFiveHundredEntries) {
  startWithoutBase();
  model().stage(P::forceFeedback, 80);
  model().discardStaged();
  const LogEntry first = model().log().front();
  for (int i = 0; i < 499; ++i) model().refresh();
  ASSERT_EQ(model().log().size(), 500U);
  EXPECT_EQ(model().log().front(), first);
  const LogEntry second = model().log()[1];

  model().refresh();
  ASSERT_EQ(model().log().size(), 500U);
  EXPECT_EQ(model().log().front(), second);

  for (int i = 0; i < 1000; ++i) {
    model().refresh();
    ASSERT_EQ(model().log().size(), 500U);
  }
  model().stage(P::forceFeedback, 80);
  model().discardStaged();
  EXPECT_EQ(model().log().back().text, "Discarded 1 unsaved change");
  std::set<UUID> ids;
  for (const LogEntry& entry : model().log()) ids.insert(entry.id);
  EXPECT_EQ(ids.size(), 500U);
}

TEST_F(ModelLog, EveryEntryIsTheStatusAsWell) {
  startWithoutBase();
  EXPECT_EQ(model().statusLine(), noBaseStatus);
  model().refresh();
  EXPECT_EQ(model().statusLine(), "No base connected");
  model().stage(P::forceFeedback, 80);
  model().discardStaged();
  EXPECT_EQ(model().statusLine(), "Discarded 1 unsaved change");
}

TEST_F(ModelLog, EveryEntryIsTold) {
  startWithoutBase();
  model().refresh();
  changes_ = 0;
  model().refresh();
  EXPECT_EQ(changes_, 1);
}

TEST_F(ModelLog, GoesToStandardErrorAsWellWhereTheEnvironmentAsksForIt) {
  for (const char* const value : {"1", "0", ""}) {
    mirror(value);
    CapturedStandardError captured;
    base();
    create();
    settle();
    model().stage(P::forceFeedback, 101);
    model().saveStaged();
    settle();
    EXPECT_EQ(captured.text(),
              "[log] Connected to CSL DD Wheel Base\n"
              "[log] Saving 1 change\u2026\n"
              "[error] Saved 0 of 1; the base rejected FF: FF value 101 is outside 0...100\n");
    end();
  }
}

TEST_F(ModelLog, StaysOffStandardErrorOtherwise) {
  CapturedStandardError captured;
  start();
  model().disconnect();
  model().refresh();
  settle();
  EXPECT_EQ(captured.text(), "");
}

TEST_F(ModelLog, AMirrorThatCannotBeWrittenChangesNothing) {
  mirror("1");
  startWithoutBase();
  const int before = ::dup(STDERR_FILENO);
  const int full = ::open("/dev/full", O_WRONLY | O_CLOEXEC);
  ::dup2(full, STDERR_FILENO);
  model().refresh();
  ::dup2(before, STDERR_FILENO);
  ::close(full);
  ::close(before);
  ASSERT_EQ(model().log().size(), 1U);
  EXPECT_EQ(model().log()[0].text, "No base connected");
}

TEST_F(ModelLog, TheMirrorHasALineForEachEntryAndNoControls) {
  mirror("1");
  startWithoutBase();
  CapturedStandardError captured;
  model().importSettings("/none\n[log] Saved\x1B[2J\u202E\xFF");
  EXPECT_EQ(captured.text(),
            "[error] Could not import /none [log] Saved [2J \uFFFD: No such file or directory\n");
}

}  // namespace
}  // namespace quorvane
