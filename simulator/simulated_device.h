#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "hid/port.h"
#include "simulator/menu_keeper.h"
#include "simulator/simulated_base.h"
#include "simulator/transcript.h"
#include "support/clock.h"
#include "support/mutex.h"

namespace quorvane {

// A simulated base in this process, behind the interface of real devices. Several ports may be
// open at once; each gets every input report, as with real nodes. Thread-safe.
//
// In real time, answers arrive when they are due. In simulated time nothing sleeps: clock() jumps
// to the next event once all readers have handled their reports, and records pauses in the
// transcript ("pause 250 ms").
class SimulatedDevice : public HIDDeviceHandle,
                        public std::enable_shared_from_this<SimulatedDevice> {
 public:
  enum class Time { real, simulated };

  static std::shared_ptr<SimulatedDevice> create(const FanatecProduct& product, Time time);
  ~SimulatedDevice() override;

  // The clock of this device, real or simulated. Valid as long as the device.
  Clock& clock();

  Transcript& transcript() { return transcript_; }

  // Runs `use` on the base under the device's lock, then wakes waiting readers.
  void withBase(const std::function<void(SimulatedBase&)>& use);

  // Events that no request caused, at the current time.
  void turn(TuningParameter parameter, std::int64_t value);
  void sendReport(Bytes report);
  void unplug();
  void plug();

  // Loads the base's menu from the storage and stores every change there from now on (MenuKeeper).
  // Call before anything opens the device. Throws what the storage throws.
  void keepMenuIn(std::unique_ptr<MenuStorage> storage, MenuKeeper::Complain complain) {
    keeper_ = std::make_unique<MenuKeeper>(*this, std::move(storage), std::move(complain));
  }

  // Replaces one property of the device's description.
  void setProperty(std::string_view key, HIDProperty value);

  // Called after the device was plugged or unplugged, on the thread that caused it.
  void setOnPlugChange(std::function<void()> handler);

  bool isPlugged() const;
  std::size_t openPorts() const;

  // Blocks until all readers have handled all reports that are due.
  void waitUntilQuiet();

  // Errors of the callers that the ports and the base found, such as a write after a close or a
  // packet of a wrong length.
  std::vector<std::string> violations() const;

  std::optional<HIDProperty> property(std::string_view key) const override;
  std::vector<HIDElement> elements() const override;
  std::string node() const override { return {}; }
  bool accessible() const override { return true; }
  HIDOpenResult open(bool exclusive) override;

 protected:
  SimulatedDevice(const FanatecProduct& product, Time time);

 private:
  class Port;
  class VirtualClock;

  Monotonic::time_point now() const QUORVANE_REQUIRES(lock_);
  void pump() QUORVANE_REQUIRES(lock_);
  bool isQuiet() QUORVANE_REQUIRES(lock_);
  bool isFirstInLine(const Port* port) QUORVANE_REQUIRES(lock_);
  bool isAlone(const Port* port) const QUORVANE_REQUIRES(lock_);
  void reportPlugChange(bool before);

  Transcript transcript_;
  std::unique_ptr<MenuKeeper> keeper_;          // only with a storage
  std::unique_ptr<VirtualClock> virtualClock_;  // only in simulated time

  mutable Mutex lock_;
  Condition changed_;
  SimulatedBase base_ QUORVANE_GUARDED_BY(lock_);
  HIDProperties properties_ QUORVANE_GUARDED_BY(lock_);
  std::vector<Port*> ports_ QUORVANE_GUARDED_BY(lock_);
  std::vector<const Port*> line_ QUORVANE_GUARDED_BY(lock_);  // queue; the first has the lock
  int visits_ QUORVANE_GUARDED_BY(lock_) = 0;                 // openings and closings
  std::vector<std::string> violations_ QUORVANE_GUARDED_BY(lock_);
  std::function<void()> onPlugChange_ QUORVANE_GUARDED_BY(lock_);
  Monotonic::time_point virtualNow_ QUORVANE_GUARDED_BY(lock_);
};

}  // namespace quorvane
