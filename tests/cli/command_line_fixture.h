#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <functional>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "cli/context.h"
#include "presets/preset_store.h"
#include "simulator/simulated_backend.h"
#include "simulator/simulated_survey.h"
#include "support/event_fd.h"
#include "tests/simulator/faulty_device.h"
#include "tests/support/eventful_clock.h"
#include "tests/support/temporary_directory.h"

namespace quorvane {

// JSON whose objects compare unequal if the order of their keys differs.
using Json = nlohmann::ordered_json;

// The result of a run of the program.
struct Outcome {
  ExitStatus status = ExitStatus::done;
  std::string out;
  std::string err;

  bool operator==(const Outcome&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const Outcome& outcome);

// An output stream that writes to memory.
class CapturedStream {
 public:
  CapturedStream();
  ~CapturedStream();
  CapturedStream(const CapturedStream&) = delete;
  CapturedStream& operator=(const CapturedStream&) = delete;

  std::FILE* file() { return file_; }
  std::string text();

 private:
  char* buffer_ = nullptr;
  std::size_t size_ = 0;
  std::FILE* file_;
};

// A USB bus with the devices in `attached`. Records the locations of resets.
class FakeUSBBus final : public USBBus {
 public:
  struct Entry {
    std::int64_t vendorID = Fanatec::vendorID;
    std::int64_t productID = defaultSimulatedProduct;
    std::int64_t locationID = 0;
    int resetError = 0;  // an errno
  };

  std::vector<Entry> attached;
  std::vector<std::int64_t> resetLocations;

  std::vector<std::unique_ptr<USBDevice>> devices() override;

 private:
  class Device;
};

// Bytes of a menu, as hexadecimal; by default those of a new simulated base.
struct MenuBytes {
  std::string_view sensitivity = "db";
  std::string_view forceFeedback = "41";
  std::string_view brakeLevelIndicator = "65";
  std::string_view naturalFriction = "0a";
  std::string_view analogPaddles = "01";
};

// The transcript line of a write of this menu.
std::string writeOf(const MenuBytes& menu, TuningLayout layout = TuningLayout::deviceID);

// The transcript lines of `set` and `presets apply` with BLI=40, FF=80, SEN=AUTO and ACP=bt.
std::vector<std::string> linesOfFourWrites();

// The machine's clock, except that pauses take no time.
class HastyClock final : public Clock {
 public:
  Monotonic::time_point now() override { return system().now(); }
  void sleepFor(Seconds /*duration*/) override {}
  bool wait(Semaphore& semaphore, Seconds timeout) override {
    return system().wait(semaphore, timeout);
  }
};

// The command line on a machine with simulated bases, in simulated time. Expects of every command
// that it closes the bases and causes no violations but `expectedViolations_`.
class CommandLineTest : public testing::Test {
 protected:
  void TearDown() override;

  // Plugs in another base. The program's clock is the first base's.
  FaultyDevice& attach(std::int64_t productID = defaultSimulatedProduct);

  // The first base. Plugs one in if there is none.
  FaultyDevice& base();
  void change(const std::function<void(SimulatedBehaviour&)>& behaviour);

  // Runs the program with the words of a line, or with these words.
  Outcome run(std::string_view line);
  Outcome run(const std::vector<std::string>& words);

  // Calls `event` at the end of the program's pause with this number, from 0.
  void atPause(int pause, std::function<void()> event);
  void interrupt() { interruption_.set(); }

  // The program's environment, with these streams.
  World world(std::FILE* out, std::FILE* err);

  // The first base's transcript.
  std::vector<std::string> transcript() { return base().transcript().lines(); }

  SimulatedBackend backend_;
  FakeUSBBus usb_;
  SimulatedSurvey survey_;
  EventFd interruption_;
  TemporaryDirectory directory_;
  TemporaryDirectory state_;
  const PresetStore store_{directory_ / "data/presets.json", Clock::system(),
                           VersionFolder(state_ / "preset-versions")};
  const PresetStore simulatedStore_{directory_ / "data/simulated/presets.json"};
  const History history_{state_ / "history", programName};
  const History simulatedHistory_{state_ / "simulated-history", programName};
  std::vector<std::shared_ptr<FaultyDevice>> devices_;
  std::vector<std::string> expectedViolations_;
  bool inSimulatedTime_ = true;

 private:
  Clock& clock();

  std::optional<EventfulClock> eventful_;
  HastyClock hasty_;
};

// A JSON document in the normal form that tests compare.
std::string documentText(const std::string& out);
std::string documentText(const Json& document);

// The JSON document that a command prints for an error that ends it.
std::string errorDocument(std::string_view kind, std::string_view message);

using Lines = std::vector<std::string>;

// The words of a line between its spaces.
std::vector<std::string> wordsOf(std::string_view line);

// Texts that many commands print.
inline constexpr const char* timeoutText =
    "Timed out waiting for tuning menu report (is the base in PC mode and on a supported "
    "firmware?)";
inline constexpr const char* simulatedName = "CSL DD / GT DD Pro / ClubSport DD";
inline constexpr const char* simulatedID = "0eb7:0020@00000000/1:4";

}  // namespace quorvane
