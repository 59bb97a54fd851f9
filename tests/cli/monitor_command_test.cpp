#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <memory>
#include <string>

#include "cli/base_access.h"
#include "cli/command_line.h"
#include "support/thread.h"
#include "tests/cli/command_line_fixture.h"
#include "tests/cli/json_schema.h"

namespace quorvane {
namespace {

// The monitor on a thread of its own. Its lines are read through a pipe.
class MonitorCommand : public CommandLineTest {
 protected:
  void SetUp() override { base(); }

  void TearDown() override {
    stop();
    CommandLineTest::TearDown();
  }

  // With `messages`, the lines include those of standard error.
  void start(std::string_view options = "", bool messages = false) {
    isJson_ = options.find("--json") != std::string_view::npos;
    std::array<int, 2> ends{-1, -1};
    ASSERT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
    lines_.reset(::fdopen(ends[0], "r"));
    out_.reset(::fdopen(ends[1], "w"));
    thread_ =
        Thread("monitor", [this, messages, words = wordsOf("monitor " + std::string(options))] {
          status_ = runCommandLine(words, world(out_.get(), messages ? out_.get() : err_.file()));
          out_.reset();
        });
  }

  // Waits for the next line.
  std::string line() {
    char* text = nullptr;
    std::size_t size = 0;
    const ssize_t length = ::getline(&text, &size, lines_.get());
    std::string result = length > 0 ? std::string(text, static_cast<std::size_t>(length) - 1) : "";
    std::free(text);
    if (isJson_) {
      EXPECT_EQ(schemaFaults(schemaNamed("monitor"), Json::parse(result)), Lines{}) << result;
    }
    return result;
  }

  // Waits until the monitor has opened the base for the n-th time and knows its menu.
  void waitUntilFollowed(int time = 1) {
    // Transcript lines: each time "open" and the request, and "close" except for the last time.
    base().transcript().waitForLines(static_cast<std::size_t>(3 * time - 1));
    base().waitUntilQuiet();
  }

  // Interrupts the monitor. Returns its output without the lines that were read.
  Outcome stop() {
    interrupt();
    thread_.join();
    std::string rest;
    if (lines_) {
      for (int c = std::fgetc(lines_.get()); c != EOF; c = std::fgetc(lines_.get())) {
        rest += static_cast<char>(c);
      }
    }
    return {status_, rest, err_.text()};
  }

 private:
  struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };

  std::unique_ptr<std::FILE, Close> lines_;
  std::unique_ptr<std::FILE, Close> out_;
  CapturedStream err_;
  bool isJson_ = false;
  ExitStatus status_ = ExitStatus::failed;
  Thread thread_;
};

const Outcome nothingMore{ExitStatus::done, "", ""};

TEST_F(MonitorCommand, TellsArrivalAndRemoval) {
  start();
  EXPECT_EQ(line(), "arrival CSL DD / GT DD Pro / ClubSport DD 0eb7:0020@00000000/1:4");
  waitUntilFollowed();
  base().unplug();
  EXPECT_EQ(line(), "removal CSL DD / GT DD Pro / ClubSport DD 0eb7:0020@00000000/1:4");
  base().plug();
  EXPECT_EQ(line(), "arrival CSL DD / GT DD Pro / ClubSport DD 0eb7:0020@00000000/1:4");
  waitUntilFollowed(2);
  EXPECT_EQ(stop(), nothingMore);
}

TEST_F(MonitorCommand, TellsWhatChanges) {
  start();
  line();
  waitUntilFollowed();
  base().turn(TuningParameter::forceFeedback, 70);
  EXPECT_EQ(line(), "FF 70 %");
  base().turn(TuningParameter::sensitivity, 0);
  EXPECT_EQ(line(), "SEN AUT");
  base().turn(TuningParameter::sensitivity, 0);
  base().turn(TuningParameter::analogPaddles, 2);
  EXPECT_EQ(line(), "ACP CH (clutch / handbrake)");
  EXPECT_EQ(stop(), nothingMore);
}

TEST_F(MonitorCommand, TellsSetModeAndTheValuesThatDiffer) {
  start();
  line();
  waitUntilFollowed();
  base().withBase([](SimulatedBase& simulated) {
    simulated.menu().toggleMode();
    simulated.menu().select(3);
    simulated.menu().put(TuningParameter::sensitivity, 900);
  });
  base().turn(TuningParameter::damperEffect, 50);
  const Lines wanted{"set 3", "mode advanced", "FF 100 %", "NDP 50 %", "NFR 0 %", "NIN 0 %"};
  Lines told;
  while (told.size() < wanted.size()) told.push_back(line());
  EXPECT_EQ(told, wanted);
  base().withBase([](SimulatedBase& simulated) { simulated.menu().toggleMode(); });
  base().turn(TuningParameter::damperEffect, 50);
  EXPECT_EQ(line(), "mode standard");
  EXPECT_EQ(stop(), nothingMore);
}

TEST_F(MonitorCommand, TellsTheAttachedWheelOnce) {
  start();
  line();
  waitUntilFollowed();
  Bytes status;
  base().withBase([&](SimulatedBase& simulated) { status = simulated.wheelStatusReport(); });
  base().sendReport(status);
  EXPECT_EQ(line(), "wheel 28, firmware 1234");
  base().sendReport(status);
  base().withBase([&](SimulatedBase& simulated) {
    simulated.attachWheel(29, 7);
    status = simulated.wheelStatusReport();
  });
  base().sendReport(status);
  EXPECT_EQ(line(), "wheel 29, firmware 7");
  EXPECT_EQ(stop(), nothingMore);
}

TEST_F(MonitorCommand, GivesOneObjectALine) {
  start("--json");
  const Json device = {{"id", simulatedID},
                       {"name", simulatedName},
                       {"productID", 32},
                       {"serialNumber", ""},
                       {"node", ""}};
  const auto nextIs = [&](const Json& wanted) { EXPECT_EQ(line(), wanted.dump()); };

  nextIs({{"event", "arrival"}, {"device", device}});
  waitUntilFollowed();
  base().turn(TuningParameter::forceFeedback, 70);
  nextIs({{"event", "value"}, {"parameter", "FF"}, {"value", 70}, {"previous", 65}});
  base().withBase([](SimulatedBase& simulated) {
    simulated.menu().toggleMode();
    simulated.menu().saveInto(3);
    simulated.menu().select(3);
  });
  base().turn(TuningParameter::brakeLevelIndicator, 40);
  nextIs({{"event", "set"}, {"value", 3}});
  nextIs({{"event", "mode"}, {"value", "advanced"}});
  nextIs({{"event", "value"}, {"parameter", "BLI"}, {"value", 40}, {"previous", 101}});
  Bytes status;
  base().withBase([&](SimulatedBase& simulated) { status = simulated.wheelStatusReport(); });
  base().sendReport(status);
  nextIs({{"event", "wheel"}, {"wheelID", 28}, {"firmwareVersion", 1234}});
  base().unplug();
  nextIs({{"event", "removal"}, {"device", device}});
  EXPECT_EQ(stop(), nothingMore);
}

TEST_F(MonitorCommand, ComparesWithTheMenuOfTheBaseThatIsThere) {
  start();
  line();
  waitUntilFollowed();
  base().unplug();
  line();
  base().withBase(
      [](SimulatedBase& simulated) { simulated.menu().put(TuningParameter::forceFeedback, 12); });
  base().plug();
  line();
  waitUntilFollowed(2);
  base().turn(TuningParameter::naturalFriction, 11);
  EXPECT_EQ(line(), "NFR 11 %");
  EXPECT_EQ(stop(), nothingMore);
}

TEST_F(MonitorCommand, AsksOnceAndSendsNothingElse) {
  start();
  line();
  waitUntilFollowed();
  base().turn(TuningParameter::forceFeedback, 70);
  line();
  stop();
  EXPECT_EQ(transcript(), (Lines{"open", "> ff 03 02 +61", "close"}));
}

TEST_F(MonitorCommand, RecordsWhatWasTurnedOnTheWheel) {
  start();
  line();
  waitUntilFollowed();
  for (const int value : {70, 71, 72}) {
    base().turn(TuningParameter::forceFeedback, value);
    line();
  }
  EXPECT_EQ(stop(), nothingMore);
  const Json records = Json::parse(run("--json history").out)["records"];
  ASSERT_EQ(records.size(), 1U);
  EXPECT_EQ(records[0]["action"], "wheel");
  EXPECT_EQ(records[0]["program"], "quorvanectl");
}

TEST_F(MonitorCommand, RecordsAtAnUnplugToo) {
  start();
  line();
  waitUntilFollowed();
  base().turn(TuningParameter::forceFeedback, 70);
  line();
  base().unplug();
  line();
  base().plug();
  line();
  waitUntilFollowed(2);
  EXPECT_EQ(stop(), nothingMore);
  EXPECT_EQ(Json::parse(run("--json history").out)["records"].size(), 1U);
}

TEST_F(MonitorCommand, ChangesOfTwoSetsAreTwoRecords) {
  start();
  line();
  waitUntilFollowed();
  base().turn(TuningParameter::forceFeedback, 70);
  line();
  base().withBase([](SimulatedBase& simulated) {
    simulated.menu().saveInto(3);
    simulated.menu().select(3);
  });
  base().turn(TuningParameter::forceFeedback, 71);
  EXPECT_EQ(line(), "set C (Custom)");
  EXPECT_EQ(line(), "FF 71 %");
  base().turn(TuningParameter::forceFeedback, 72);
  EXPECT_EQ(line(), "FF 72 %");
  EXPECT_EQ(stop(), nothingMore);
  const Json records = Json::parse(run("--json history").out)["records"];
  ASSERT_EQ(records.size(), 2U);
  EXPECT_EQ(records[0]["set"], 2);
  EXPECT_EQ(records[1]["set"], 3);
}

TEST_F(MonitorCommand, TellsOfEachBaseButFollowsTheFirst) {
  attach(0x0006);
  attach(0x0E03);
  start();
  EXPECT_EQ(line(), "arrival Podium Wheel Base DD1 0eb7:0006@00000000/1:4");
  EXPECT_EQ(line(), "arrival CSL DD / GT DD Pro / ClubSport DD 0eb7:0020@00000000/1:4");
  EXPECT_EQ(line(), "arrival CSL Elite Wheel Base 0eb7:0e03@00000000/1:4");
  devices_[1]->transcript().waitForLines(2);
  EXPECT_EQ(stop(), nothingMore);
  EXPECT_EQ(transcript(), Lines{});
}

TEST_F(MonitorCommand, GoesOnWithTheNextBaseWhenTheFirstLeaves) {
  attach(0x0006);
  start();
  line();
  line();
  devices_[1]->transcript().waitForLines(2);
  devices_[1]->unplug();
  EXPECT_EQ(line(), "removal Podium Wheel Base DD1 0eb7:0006@00000000/1:4");
  waitUntilFollowed();
  base().turn(TuningParameter::forceFeedback, 70);
  EXPECT_EQ(line(), "FF 70 %");
  EXPECT_EQ(stop(), nothingMore);
}

TEST_F(MonitorCommand, WatchesOnlyTheNamedBase) {
  attach(0x0006);
  start("--device 0eb7:0020@00000000/1:4");
  EXPECT_EQ(line(), "arrival CSL DD / GT DD Pro / ClubSport DD 0eb7:0020@00000000/1:4");
  waitUntilFollowed();
  devices_[1]->unplug();
  devices_[1]->plug();
  base().turn(TuningParameter::forceFeedback, 70);
  EXPECT_EQ(line(), "FF 70 %");
  EXPECT_EQ(stop(), nothingMore);
}

TEST_F(MonitorCommand, MissingPermissionIsToldAndTheWatchGoesOn) {
  base().failOpenWith(HIDReturnCode::notPermitted);
  start();
  line();
  base().unplug();
  EXPECT_EQ(line().substr(0, 8), "removal ");
  const Outcome outcome = stop();
  EXPECT_EQ(outcome.status, ExitStatus::done);
  EXPECT_EQ(outcome.err, "HID I/O failed: " + describeHIDReturn(HIDReturnCode::notPermitted) +
                             "\n" + permissionHint + "\n");
}

TEST_F(MonitorCommand, GoesOnWhenTheSystemGrantsTheDevice) {
  base().failOpenWith(HIDReturnCode::notPermitted);
  start();
  line();
  base().failOpenWith(HIDReturnCode::success);
  backend_.reportChange();
  base().transcript().waitForLines(2);
  base().waitUntilQuiet();
  base().turn(TuningParameter::forceFeedback, 70);
  EXPECT_EQ(line(), "FF 70 %");
  EXPECT_EQ(stop().out, "");
}

TEST_F(MonitorCommand, MissingPermissionIsALineOfJsonToo) {
  base().failOpenWith(HIDReturnCode::notPermitted);
  start("--json");
  line();
  const Json failure = Json::parse(line());
  EXPECT_EQ(failure["event"], "error");
  EXPECT_EQ(failure["error"]["kind"], "ioFailed");
  EXPECT_EQ(failure["error"]["message"],
            "HID I/O failed: " + describeHIDReturn(HIDReturnCode::notPermitted));
  stop();
}

TEST_F(MonitorCommand, WithoutABaseItSaysThatItWaits) {
  base().unplug();
  start("", true);
  EXPECT_EQ(line(), "No base found; waiting for one. Ctrl-C ends this.");
  base().plug();
  EXPECT_EQ(line().substr(0, 8), "arrival ");
  waitUntilFollowed();
  base().unplug();
  EXPECT_EQ(line().substr(0, 8), "removal ");
  EXPECT_EQ(stop(), nothingMore);
}

TEST_F(MonitorCommand, WithoutTheNamedBaseItSaysThatItWaits) {
  start("--device QV-9", true);
  EXPECT_EQ(line(), "No base answers to \"QV-9\"; waiting for one. Ctrl-C ends this.");
  EXPECT_EQ(stop(), nothingMore);
}

}  // namespace
}  // namespace quorvane
