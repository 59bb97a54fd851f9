#include <gtest/gtest.h>

#include <QCoreApplication>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <set>
#include <string>
#include <thread>

#include "support/thread.h"
#include "tests/app/model_fixture.h"
#include "tests/support/no_threads.h"

namespace quorvane {
namespace {

using P = TuningParameter;

constexpr int rounds = 1000;

std::ptrdiff_t threads() {
  return std::distance(std::filesystem::directory_iterator("/proc/self/task"), {});
}

// The kernel lists a thread for a moment after it was joined. A leak would leave one per round.
constexpr std::ptrdiff_t stillEnding = 20;

// Models that are destroyed at any moment. They must leave no thread and no open base behind, and
// cause no violations.
class ModelEnd : public ModelTest {
 protected:
  // Makes a model, calls `begin` and destroys the model, `rounds` times.
  void endAThousandTimes(const std::function<void(int round)>& begin) {
    base();
    const std::ptrdiff_t before = threads();
    for (int round = 0; round < rounds; ++round) {
      create();
      begin(round);
      end();
      ASSERT_EQ(base().openPorts(), 0U);
      base().transcript().clear();
      forgetHistory();
    }
    EXPECT_LT(threads(), before + stillEnding);
  }

  // A history of a thousand writes would be read in every round.
  void forgetHistory() {
    const auto file = history_.fileOf(info(0));
    if (file) std::filesystem::remove(*file);
  }

  // Waits until the model is connected, and clears the transcript.
  void connect() {
    waitUntil([this] { return model().isConnected(); });
    base().transcript().clear();
  }
};

TEST_F(ModelEnd, RightAfterTheConstruction) {
  endAThousandTimes([](int) {});
}

TEST_F(ModelEnd, WhileTheBaseIsBeingOpened) {
  endAThousandTimes([this](int round) {
    base().transcript().waitForLines(static_cast<std::size_t>(round % 4) + 1);
  });
}

TEST_F(ModelEnd, WhileAnExchangeRuns) {
  endAThousandTimes([this](int round) {
    connect();
    model().stage(P::forceFeedback, round % 100);
    model().stage(P::sensitivity, 800);
    model().saveStaged();
    model().selectSlot(round % 5 + 1);
    model().refresh();
    base().transcript().waitForLines(static_cast<std::size_t>(round % 9) + 1);
  });
}

TEST_F(ModelEnd, WhileAnExaminationRuns) {
  endAThousandTimes([this](int round) {
    model().examine();
    base().transcript().waitForLines(static_cast<std::size_t>(round % 8) + 1);
  });
}

TEST_F(ModelEnd, WhileTheBaseLeaves) {
  endAThousandTimes([this](int round) {
    connect();
    if (round % 2 == 0) model().refresh();
    base().unplug();
    if (round % 3 == 0) QCoreApplication::sendPostedEvents();
    if (round % 5 != 0) base().plug();
    if (round % 7 == 0) QCoreApplication::sendPostedEvents();
    end();
    base().plug();
  });
}

TEST_F(ModelEnd, WhileBasesComeAndGo) {
  base();
  std::atomic<bool> done = false;
  {
    const Thread cable("cable", [&] {
      while (!done) {
        base().unplug();
        base().plug();
      }
    });
    endAThousandTimes([](int round) {
      if (round % 2 == 0) QCoreApplication::sendPostedEvents();
    });
    done = true;
  }
}

TEST_F(ModelEnd, WhileReportsStream) {
  base();
  std::atomic<bool> done = false;
  {
    const Thread driver("driver", [&] {
      for (std::uint16_t number = 0; !done; ++number) {
        simulate([&](SimulatedBase& simulated) {
          simulated.attachWheel(number % 100, number);
          simulated.sendReport(simulated.wheelStatusReport(), {});
          simulated.turn(P::forceFeedback, number % 100, {});
        });
        base().waitUntilQuiet();
      }
    });
    endAThousandTimes([this](int round) {
      if (round % 2 == 0) connect();
    });
    done = true;
  }
}

class ModelThreads : public ModelTest {};

// The fixture checks the thread of `changed` in every test. This one causes all kinds of changes.
TEST_F(ModelThreads, EveryChangeIsToldOnTheMainThread) {
  std::set<std::thread::id> tellers;
  base();
  create();
  QObject::connect(
      &model(), &AppModel::changed, &model(), [&] { tellers.insert(std::this_thread::get_id()); },
      Qt::DirectConnection);
  settle();
  base().turn(P::forceFeedback, 42);
  simulate(
      [](SimulatedBase& simulated) { simulated.sendReport(simulated.wheelStatusReport(), {}); });
  settle();
  model().stage(P::forceFeedback, 80);
  model().saveStaged();
  model().refresh();
  model().selectSlot(3);
  model().usbReset();
  waitUntil([this] {
    return model().statusLine() == "USB reset issued; the base will reconnect in a few seconds";
  });
  settle();
  base().unplug();
  settle();
  end();
  EXPECT_EQ(tellers, (std::set<std::thread::id>{std::this_thread::get_id()}));
}

// A system on which no thread can be started.
class ModelWithoutThreads : public ModelTest {
 protected:
  // Waits for the end of the queue's thread, which comes after its last job.
  static void awaitEndOfQueue() {
    while (isQueueThere()) std::this_thread::yield();
  }

 private:
  static bool isQueueThere() {
    for (const auto& task : std::filesystem::directory_iterator("/proc/self/task")) {
      std::string name;
      std::getline(std::ifstream(task.path() / "comm"), name);
      if (name == "quorvane.hid") return true;
    }
    return false;
  }
};

TEST_F(ModelWithoutThreads, SaysSoAtTheStartAndTriesAgainWhenAsked) {
  base();
  const std::string noThread = noThreadText;
  {
    const NoThreads none;
    create();
    settle();
    EXPECT_EQ(takeLog(),
              (Lines{"[error] Bases that come and go are not noticed until the next start: HID I/O "
                     "failed: " +
                         noThread,
                     "[error] Could not open CSL DD / GT DD Pro / ClubSport DD: " + noThread}));
    EXPECT_FALSE(model().busy());
  }
  model().connect(info(0));
  settle();
  EXPECT_TRUE(model().isConnected());
}

TEST_F(ModelWithoutThreads, EveryActionFailsInWordsAndLeavesTheModelIdle) {
  start();
  model().stage(P::forceFeedback, 80);
  awaitEndOfQueue();
  takeTranscript();
  takeLog();
  const std::string reason = std::string(" failed: ") + noThreadText;
  {
    const NoThreads none;
    model().refresh();
    model().saveStaged();
    model().selectSlot(3);
    model().usbReset();
    model().examine();
    EXPECT_FALSE(model().busy());
    EXPECT_FALSE(model().isExamining());
  }
  EXPECT_EQ(takeLog(),
            (Lines{"[error] Read the tuning menu" + reason, "[log] Saving 1 change\u2026",
                   "[error] Save" + reason, "[error] Switch set" + reason,
                   "[error] USB reset" + reason, "[error] Examination" + reason}));
  EXPECT_EQ(staged(), "FF=80");
  EXPECT_EQ(takeTranscript(), Lines{});
  model().saveStaged();
  settle();
  EXPECT_EQ(staged(), "");
}

TEST_F(ModelWithoutThreads, ABaseCanBeLetGo) {
  start();
  awaitEndOfQueue();
  {
    const NoThreads none;
    model().disconnect();
  }
  EXPECT_FALSE(model().isConnected());
}

}  // namespace
}  // namespace quorvane
