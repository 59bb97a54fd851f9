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

// A simulated base behind the port that real devices have, in this process. Several ports may be
// open at once; each gets every input report, as with real nodes. Any thread may call.
//
// In real time, answers come when they are due. In virtual time nothing ever waits: `clock()` jumps
// to the next event once all readers have handled what they got, and its pauses are recorded in the
// transcript ("pause 250 ms").
class SimulatedDevice final : public HIDDeviceHandle,
                              public std::enable_shared_from_this<SimulatedDevice> {
 public:
  enum class Time { real, simulated };

  static std::shared_ptr<SimulatedDevice> create(const FanatecProduct& product, Time time);
  ~SimulatedDevice() override;

  // The clock that belongs to this device's time; lives as long as the device.
  Clock& clock();

  Transcript& transcript() { return transcript_; }

  // Runs `use` on the base while nothing else does, then lets waiting readers look again.
  void withBase(const std::function<void(SimulatedBase&)>& use);

  // Unasked events at the present time.
  void turn(TuningParameter parameter, std::int64_t value);
  void sendReport(Bytes report);
  void unplug();
  void plug();

  // Another base takes the place of one that was unplugged.
  void plugAs(const FanatecProduct& product);

  // From now on the base has the menu of the storage and keeps every change of it there
  // (MenuKeeper). Called before anything opens the device. Throws what the storage throws.
  void keepMenuIn(std::unique_ptr<MenuStorage> storage, MenuKeeper::Complain complain) {
    keeper_ = std::make_unique<MenuKeeper>(*this, std::move(storage), std::move(complain));
  }

  // Replaces one property of the description, or the element list.
  void setProperty(std::string_view key, HIDProperty value);

  // Every later opening fails with the code; success lets them through again.
  void failOpenWith(HIDReturn code);

  // Whether ports take turns at writing; without, as on a system that has no locks.
  void setHasWriteLocks(bool hasWriteLocks);

  // Whether ports notice who opens the device and closes it; without, as where the system watches
  // no more files for its user.
  void setTellsOpenings(bool tellsOpenings);

  // Who is said to have the turn at writing when it is none of the ports asking.
  void setTurnHolder(std::optional<NodeHolder> holder);

  // As if the readers of all open ports came so late that reports may be lost.
  void delayReaders();

  // Called after the device was plugged or unplugged, on the thread that caused it.
  void setOnPlugChange(std::function<void()> handler);

  bool isPlugged() const;
  std::size_t openPorts() const;

  // Blocks until every reader has handled all that is due.
  void waitUntilQuiet();

  // What the base and the ports found wrong with their callers' conduct.
  std::vector<std::string> violations() const;

  std::optional<HIDProperty> property(std::string_view key) const override;
  std::vector<HIDElement> elements() const override;
  std::string node() const override { return {}; }
  bool accessible() const override { return true; }
  HIDOpenResult open(bool exclusive) override;

 private:
  class Port;
  class VirtualClock;

  SimulatedDevice(const FanatecProduct& product, Time time);

  Monotonic::time_point now() const QUORVANE_REQUIRES(lock_);
  void pump() QUORVANE_REQUIRES(lock_);
  bool isQuiet() QUORVANE_REQUIRES(lock_);
  bool isFirstInLine(const Port* port) QUORVANE_REQUIRES(lock_);
  bool isAlone(const Port* port) const QUORVANE_REQUIRES(lock_);
  void reportPlugChange(bool before);

  Transcript transcript_;
  std::unique_ptr<MenuKeeper> keeper_;          // with a storage
  std::unique_ptr<VirtualClock> virtualClock_;  // in simulated time

  mutable Mutex lock_;
  Condition changed_;
  SimulatedBase base_ QUORVANE_GUARDED_BY(lock_);
  HIDProperties properties_ QUORVANE_GUARDED_BY(lock_);
  std::vector<Port*> ports_ QUORVANE_GUARDED_BY(lock_);
  std::vector<const Port*> line_ QUORVANE_GUARDED_BY(lock_);  // for the turn; the first has it
  int visits_ QUORVANE_GUARDED_BY(lock_) = 0;                 // openings and closings
  bool tellsOpenings_ QUORVANE_GUARDED_BY(lock_) = true;
  bool hasWriteLocks_ QUORVANE_GUARDED_BY(lock_) = true;
  std::optional<NodeHolder> turnHolder_ QUORVANE_GUARDED_BY(lock_);
  std::vector<std::string> violations_ QUORVANE_GUARDED_BY(lock_);
  HIDReturn openFailure_ QUORVANE_GUARDED_BY(lock_) = HIDReturnCode::success;
  std::function<void()> onPlugChange_ QUORVANE_GUARDED_BY(lock_);
  Monotonic::time_point virtualNow_ QUORVANE_GUARDED_BY(lock_);
};

}  // namespace quorvane
