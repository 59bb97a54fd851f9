#pragma once

#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/app_model.h"
#include "simulator/simulated_backend.h"
#include "simulator/simulated_usb_bus.h"
#include "tests/simulator/faulty_device.h"
#include "tests/support/eventful_clock.h"
#include "tests/support/scoped_variable.h"
#include "tests/support/temporary_directory.h"

namespace quorvane {

using Lines = std::vector<std::string>;

// The model's texts for the simulated base.
inline constexpr const char* displayName = "CSL DD / GT DD Pro / ClubSport DD";
inline constexpr const char* baseName = "CSL DD Wheel Base";
inline constexpr const char* connectedLine = "[log] Connected to CSL DD Wheel Base";
inline constexpr const char* disconnectedLine = "[log] Base disconnected";
inline constexpr const char* noBaseStatus =
    "No base found. Power it on in PC mode and connect it to this Mac.";
inline constexpr const char* connectingStatus =
    "Connecting to CSL DD / GT DD Pro / ClubSport DD\u2026";
inline constexpr const char* noAnswerLine =
    "[error] The base did not answer the tuning read. Is it in PC mode?";
inline constexpr const char* menuTimeout =
    "Timed out waiting for tuning menu report (is the base in PC mode and on a supported "
    "firmware?)";

// The requests that every read sends.
inline constexpr const char* menuRequest = "> ff 03 02 +61";
inline constexpr const char* identityOn = "> ff 08 01 ff +60";
inline constexpr const char* identityRequest = "> ff 08 02 +61";

inline constexpr const char* commitPause = "pause 250 ms";

// The transcript line of a write to a new simulated base, with three of its bytes, as hexadecimal.
std::string writeOf(std::string_view sensitivity, std::string_view forceFeedback,
                    std::string_view naturalInertia);

// Simulated bases. A test can delay what their watchers report, and wait for it.
class WatchedBackend final : public HIDBackend {
 public:
  void add(const std::shared_ptr<SimulatedDevice>& device);

  std::vector<std::shared_ptr<HIDDeviceHandle>> devices(
      std::optional<std::int64_t> vendorID) override;
  std::unique_ptr<HIDMonitor> monitor(std::optional<std::int64_t> vendorID) override;

  void setCanWatch(bool canWatch) { canWatch_ = canWatch; }

  // Callbacks: before a monitor is made, and before devices are listed on the main thread.
  void setOnMonitor(std::function<void(std::optional<std::int64_t> vendorID)> handler);
  void setOnList(std::function<void(std::optional<std::int64_t> vendorID)> handler);

  // Called once, after the next plugging or unplugging of a base, on the thread that caused it.
  void atPlugChange(std::function<void()> event);

  // Reports a change of a device to the watchers.
  void reportChange() { events_->report(); }

  // While held, the watchers report no plugging or unplugging. They report it afterwards.
  void hold(bool held);

  // Blocks until the watchers have reported all events that are not held.
  void waitUntilQuiet();

 private:
  class Monitor;

  // `lock` guards all fields here and those of the monitors.
  struct Events {
    Mutex lock;
    Condition changed;
    std::uint64_t count = 0;
    bool onHold = false;
    std::vector<Monitor*> monitors;
    std::function<void()> atChange;

    // Returns the current count.
    std::uint64_t add(Monitor* monitor);
    void report();
  };

  SimulatedBackend simulated_;
  const std::shared_ptr<Events> events_ = std::make_shared<Events>();
  std::function<void(std::optional<std::int64_t>)> onMonitor_;
  std::function<void(std::optional<std::int64_t>)> onList_;
  bool canWatch_ = true;
};

// File panels that the test answers.
class ScriptedPanels final : public FilePanels {
 public:
  void chooseDestination(const Request& request, Chosen chosen) override;
  void chooseFile(const Request& request, Chosen chosen) override;

  // The next panel returns this file at once. Other panels stay open until answer().
  void answerAtOnce(std::filesystem::path file) { answer_ = std::move(file); }

  // Answers the oldest open panel.
  void answer(const std::filesystem::path& file);

  std::size_t open() const { return open_.size(); }

  // The requests since the last call: "save|open: TITLE [BUTTON] CONTENT, NAME".
  Lines takeRequests();

 private:
  void show(std::string_view panel, const Request& request, Chosen chosen);

  Lines requests_;
  std::optional<std::filesystem::path> answer_;
  std::deque<Chosen> open_;
};

// A USB bus with the first base. `afterReset` is called after each reset, on the resetting thread.
class ScriptedUSBBus final : public USBBus {
 public:
  void put(FaultyDevice* device) { device_ = device; }
  void refuseWith(int error) { error_ = error; }
  void afterReset(std::function<void()> event) { afterReset_ = std::move(event); }

  std::vector<std::unique_ptr<USBDevice>> devices() override;

 private:
  class Device;

  FaultyDevice* device_ = nullptr;
  int error_ = 0;  // an errno
  std::function<void()> afterReset_;
};

// The facts of a simulated machine. `beforeTelling` is called by take(), on its thread.
class ScriptedSurvey final : public HIDSurvey {
 public:
  void beforeTelling(std::function<void()> event) { beforeTelling_ = std::move(event); }
  int timesTold() const { return timesTold_; }

  // The facts to tell from now on; before, those of a simulated machine. No examination may run.
  void tell(MachineFacts facts) { facts_ = std::move(facts); }

  MachineFacts take(std::int64_t vendorID) override;

 private:
  std::function<void()> beforeTelling_;
  std::atomic<int> timesTold_ = 0;
  std::optional<MachineFacts> facts_;
};

// A model with simulated bases, in the simulated time of the first base unless useRealTime() is
// called.
//
// At the end of every test the fixture expects that the model is not busy, that every base is
// closed and reports no violations, and that `changed` was only emitted on the main thread.
class ModelTest : public testing::Test {
 protected:
  using Moment = EventfulClock::Moment;

  ModelTest();
  void TearDown() override;

  // Bases answer in real time, and pauses take no time. For tests with several bases.
  void useRealTime() { time_ = FaultyDevice::Time::real; }

  // Plugs in another base, at a USB location of its own.
  FaultyDevice& attach(std::int64_t productID = defaultSimulatedProduct);

  // The first base. Plugs one in if there is none.
  FaultyDevice& base();
  FaultyDevice& device(std::size_t number) { return *devices_.at(number); }
  HIDDeviceInfo info(std::size_t number) { return HIDEnumerator::info(devices_.at(number)); }

  void behave(const std::function<void(SimulatedBehaviour&)>& change);
  void simulate(const std::function<void(SimulatedBase&)>& change);

  // A value in the first base's active set.
  std::int64_t valueOnBase(TuningParameter parameter);

  // create() makes a model, for the base that `which` names if not empty. start() also plugs in a
  // base and settles; startWithoutBase() only settles.
  AppModel& create(const std::string& which = {});
  AppModel& start();
  AppModel& startWithoutBase(const std::string& which = {});
  void end() { model_.reset(); }
  AppModel& model() { return *model_; }

  // Runs the event loop until the predicate holds. It is checked first and after every change of
  // the model; other events that have arrived by then are handled as well.
  void waitUntil(const std::function<bool()>& holds);

  // Runs the event loop until the model is idle: all events of the watchers and readers are
  // handled, and no exchange is queued or running.
  void settle();

  // Resets the base's USB device and waits until the base has left and is connected again.
  void resetUSBAndReconnect();

  // The new lines since the last call: of the log, as on standard error; of the first base's
  // transcript.
  Lines takeLog();
  Lines takeTranscript();

  // The staged edits: "SEN=800 FF=80".
  std::string staged() const;

  // A parameter's value in the model's menu.
  std::int64_t valueOf(TuningParameter parameter) const;

  // Records state() at each change, without repetitions: "busy|idle; the base's name; what is known
  // of it; staged edits; the status". takeStates() ends the recording and returns it, from the
  // first state on whose status ends with `firstStatus`.
  void watchStates() { states_.emplace(); }
  Lines takeStates(std::string_view firstStatus = {});
  std::string state() const;

  TemporaryDirectory directory_;
  WatchedBackend backend_;
  EventfulClock clock_;
  ScriptedPanels panels_;
  ScriptedUSBBus usb_;
  ScriptedSurvey survey_;
  std::optional<PresetStore> store_;
  TemporaryDirectory state_;
  const History history_{state_.path(), "quorvane"};
  std::atomic<int> changes_ = 0;

 private:
  void heardChange();

  const ScopedVariable noDemo_{"QUORVANE_DEMO_STAGE"};
  const ScopedVariable noMirror_{"QUORVANE_LOG_STDERR"};
  FaultyDevice::Time time_ = FaultyDevice::Time::simulated;
  std::vector<std::shared_ptr<FaultyDevice>> devices_;
  std::unique_ptr<AppModel> model_;
  std::size_t logTaken_ = 0;
  std::optional<Lines> states_;
  std::atomic<int> changesElsewhere_ = 0;
};

// "SEN=800 FF=80".
std::string textOf(const StagedValues& values);

// A user preset with these values.
TuningPreset presetOf(std::string name, const std::vector<ParameterValue>& values);

}  // namespace quorvane
