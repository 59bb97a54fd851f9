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
#include "simulator/simulated_device.h"
#include "simulator/simulated_usb_bus.h"
#include "tests/support/eventful_clock.h"
#include "tests/support/scoped_variable.h"
#include "tests/support/temporary_directory.h"

namespace quorvane {

using Lines = std::vector<std::string>;

// What the model says of the simulated base.
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

// A write of the simulated base's second set as it comes, with three of its bytes.
std::string writeOf(std::string_view sensitivity, std::string_view forceFeedback,
                    std::string_view naturalInertia);

// Simulated bases whose watchers can be held back and waited for.
class WatchedBackend final : public HIDBackend {
 public:
  void add(const std::shared_ptr<SimulatedDevice>& device);

  std::vector<std::shared_ptr<HIDDeviceHandle>> devices(
      std::optional<std::int64_t> vendorID) override;
  std::unique_ptr<HIDMonitor> monitor(std::optional<std::int64_t> vendorID) override;

  void setCanWatch(bool canWatch) { canWatch_ = canWatch; }

  // Called before a monitor is made, and before devices are listed on the thread of the test.
  void setOnMonitor(std::function<void(std::optional<std::int64_t> vendorID)> handler);
  void setOnList(std::function<void(std::optional<std::int64_t> vendorID)> handler);

  // Called once, when the next base has been plugged or unplugged, on the thread that caused it.
  void atPlugChange(std::function<void()> event);

  // Tells the watchers that something about a device is different.
  void reportChange() { events_->report(); }

  // While held, plugging and unplugging goes unnoticed; after that it is told.
  void hold(bool held);

  // Blocks until the watchers have told everything that they may tell.
  void waitUntilQuiet();

 private:
  class Monitor;

  // The lock is for everything in it, and in the monitors.
  struct Events {
    Mutex lock;
    Condition changed;
    std::uint64_t count = 0;
    bool onHold = false;
    std::vector<Monitor*> monitors;
    std::function<void()> atChange;

    // Returns the count as the monitor finds it.
    std::uint64_t add(Monitor* monitor);
    void report();
  };

  SimulatedBackend simulated_;
  const std::shared_ptr<Events> events_ = std::make_shared<Events>();
  std::function<void(std::optional<std::int64_t>)> onMonitor_;
  std::function<void(std::optional<std::int64_t>)> onList_;
  bool canWatch_ = true;
};

// Panels that answer by a script.
class ScriptedPanels final : public FilePanels {
 public:
  void chooseDestination(const Request& request, Chosen chosen) override;
  void chooseFile(const Request& request, Chosen chosen) override;

  // The next panel answers before it returns; without an answer it stays open.
  void answerAtOnce(std::filesystem::path file) { answer_ = std::move(file); }

  // The oldest panel that is open gets its answer.
  void answer(const std::filesystem::path& file);

  std::size_t open() const { return open_.size(); }

  // "save|open: TITLE [BUTTON] CONTENT, NAME".
  Lines takeRequests();

 private:
  void show(std::string_view panel, const Request& request, Chosen chosen);

  Lines requests_;
  std::optional<std::filesystem::path> answer_;
  std::deque<Chosen> open_;
};

// The first base's place on the USB bus. Something may happen when a reset is done, on the thread
// that asked for it.
class ScriptedUSBBus final : public USBBus {
 public:
  void put(SimulatedDevice* device) { device_ = device; }
  void refuseWith(int error) { error_ = error; }
  void afterReset(std::function<void()> event) { afterReset_ = std::move(event); }

  std::vector<std::unique_ptr<USBDevice>> devices() override;

 private:
  class Device;

  SimulatedDevice* device_ = nullptr;
  int error_ = 0;  // an errno
  std::function<void()> afterReset_;
};

// The facts of a machine that is nothing but simulated. Something may happen before they are told,
// on the thread that asks for them.
class ScriptedSurvey final : public HIDSurvey {
 public:
  void beforeTelling(std::function<void()> event) { beforeTelling_ = std::move(event); }
  int timesTold() const { return timesTold_; }

  MachineFacts take(std::int64_t vendorID) override;

 private:
  std::function<void()> beforeTelling_;
  std::atomic<int> timesTold_ = 0;
};

// A model in a world of simulated bases. Unless asked otherwise, its time is that of the one base.
//
// At the end of every test nothing is going on any more, every base is closed and has found nothing
// wrong with how it was treated, and all changes were told on the main thread.
class ModelTest : public testing::Test {
 protected:
  using Moment = EventfulClock::Moment;

  ModelTest();
  void TearDown() override;

  // The bases answer in real time, and pauses take none; for several bases.
  void useRealTime() { time_ = SimulatedDevice::Time::real; }

  // Plugs in another base, at a place of its own.
  SimulatedDevice& attach(std::int64_t productID = defaultSimulatedProduct);

  // The first base, plugged in when there is none.
  SimulatedDevice& base();
  SimulatedDevice& device(std::size_t number) { return *devices_.at(number); }
  HIDDeviceInfo info(std::size_t number) { return HIDEnumerator::info(devices_.at(number)); }

  void behave(const std::function<void(SimulatedBehaviour&)>& change);
  void simulate(const std::function<void(SimulatedBase&)>& change);

  // A value of the active set of the first base.
  std::int64_t valueOnBase(TuningParameter parameter);

  // Makes a model, perhaps one that is to use a certain base; `start` with a base, and until it has
  // settled.
  AppModel& create(const std::string& which = {});
  AppModel& start();
  AppModel& startWithoutBase(const std::string& which = {});
  void end() { model_.reset(); }
  AppModel& model() { return *model_; }

  // Runs the event loop until the predicate has held. It is asked after every change of the model,
  // and what else has come in by then is handled as well.
  void waitUntil(const std::function<bool()>& holds);

  // Runs the event loop until nothing is going on: the watchers and the readers have told
  // everything, the model has heard it, and no exchange is left.
  void settle();

  // Resets the base's USB device and waits until the base has left and is connected again.
  void resetUSBAndReconnect();

  // What was logged and what the first base saw since it was last asked. Log lines are written as
  // on standard error.
  Lines takeLog();
  Lines takeTranscript();

  // "SEN=800 FF=80".
  std::string staged() const;

  // The menu's value of a parameter, as the model knows it.
  std::int64_t valueOf(TuningParameter parameter) const;

  // From now on, what a window would show at each change: "busy|idle; the name; what is known of
  // the base; staged edits; the status". Repetitions are left out; so is, when asked for, what came
  // before a status.
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
  std::atomic<int> changes_ = 0;

 private:
  void heardChange();

  const ScopedVariable noDemo_{"QUORVANE_DEMO_STAGE"};
  const ScopedVariable noMirror_{"QUORVANE_LOG_STDERR"};
  SimulatedDevice::Time time_ = SimulatedDevice::Time::simulated;
  std::vector<std::shared_ptr<SimulatedDevice>> devices_;
  std::unique_ptr<AppModel> model_;
  std::size_t logTaken_ = 0;
  std::optional<Lines> states_;
  std::atomic<int> changesElsewhere_ = 0;
};

// "SEN=800 FF=80".
std::string textOf(const StagedValues& values);

// A preset of the user's with these values.
TuningPreset presetOf(std::string name, const std::vector<ParameterValue>& values);

}  // namespace quorvane
