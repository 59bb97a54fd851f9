#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "hid/connection.h"
#include "presets/tuning_preset.h"
#include "protocol/commands.h"
#include "protocol/identity_report.h"
#include "protocol/tuning_snapshot.h"
#include "protocol/wheel_status.h"
#include "session/menu_place.h"
#include "support/clock.h"
#include "support/mutex.h"

namespace quorvane {

// The session with one wheel base: it routes the base's reports, keeps the latest of each kind and
// carries out reads, writes and menu commands.
//
// The connection may batch reports: what the base sends unasked, for instance while somebody uses
// its own menu, may arrive up to 30 ms late. Hold a LowLatencyScope of the connection to get it at
// once. Answers are never late.
//
// Always held by a shared pointer (WheelBase::create): reports that come in while the last owner
// lets go keep it alive until they are handled. Operations block their caller for the pauses and
// time-outs given; they must not be called on the connection's delivery thread. There are no
// retries. Within a session the caller serialises writes. Across sessions and programs each
// verified write holds the device's write lock (WriteLock); it waits for the lock up to
// `readTimeout`, then throws timeout. The kept reports may be read from any thread and outlive
// disconnect(). A session is for one connection: after disconnect(), or when its base has left, a
// new one is made.
class WheelBase : public std::enable_shared_from_this<WheelBase> {
 public:
  using TuningHandler = std::function<void(const TuningSnapshot&)>;
  using StatusHandler = std::function<void(WheelBase&)>;

  // What became of one value of a preset.
  struct ApplyResult {
    TuningParameter parameter = TuningParameter::slot;
    std::int64_t value = 0;            // that was asked for, in display units
    std::optional<std::string> error;  // absent on success, else its description

    bool operator==(const ApplyResult&) const = default;
  };
  using ApplyHandler = std::function<void(const ApplyResult&)>;

  // How long the session's own reads wait.
  static constexpr Seconds readTimeout{2.0};

  // Performs no I/O. The clock must outlive the session.
  static std::shared_ptr<WheelBase> create(HIDDeviceInfo info, Clock& clock = Clock::system());

  WheelBase(const WheelBase&) = delete;
  WheelBase& operator=(const WheelBase&) = delete;

  const HIDDeviceInfo& info() const { return info_; }
  const std::optional<FanatecProduct>& product() const { return product_; }
  HIDConnection& connection() { return connection_; }

  // Called on the delivery thread after every tuning report; and when the attached wheel or its
  // firmware version changed. An empty function calls nothing. May be set at any time.
  void setOnTuningUpdate(TuningHandler handler);
  void setOnStatusUpdate(StatusHandler handler);

  // What a session is for. One for reading closes sooner. It may give commands and write all the
  // same, but reads the menu before every value.
  enum class Use { reading, writing };

  // Opens the connection (shared) and subscribes to its reports; asks nothing of the base.
  // Throws FanatecError ioFailed, or notConnected when disconnect() came first or meanwhile.
  void connect(Use use = Use::writing);

  // Closes the connection for good. A read that waits ends at once, with notConnected. May be
  // called from any thread, whatever else is going on.
  void disconnect();

  // The latest report of each kind, absent before the first.
  std::optional<TuningSnapshot> tuning() const;
  std::optional<IdentityReport> identity() const;
  std::optional<std::uint16_t> wheelID() const;          // of the attached steering wheel
  std::optional<std::uint16_t> firmwareVersion() const;  // reported with the wheel's ID

  // Asks for a report and waits for it. Throws FanatecError timeout, notConnected when disconnect
  // is called meanwhile, or the send's error.
  TuningSnapshot fetchTuning(Seconds timeout);
  IdentityReport fetchIdentity(Seconds timeout);

  // The packet that would write the value, copied from the latest snapshot. Throws
  // noTuningSnapshot, outOfRange or notAvailable.
  HIDReportPacket packet(TuningParameter parameter, std::int64_t value) const;

  // Writes one value. With `verify`: waits 0.25 s, reads the menu back, throws writeIgnored when
  // the base kept another byte, and returns what was read; without: returns nothing. `slot`
  // switches the set instead, unchecked. When others may have written, or reports may have been
  // lost, since the menu was read, reads it first. With `meantFor`, throws invalidReport instead of
  // writing when the base is in another set or mode than that. Throws what packet, WriteLock, send
  // and fetchTuning throw.
  std::optional<TuningSnapshot> set(TuningParameter parameter, std::int64_t value, bool verify,
                                    const std::optional<MenuPlace>& meantFor = {});

  // Writes and verifies the preset's values one by one (TuningPreset::applicable); a failure does
  // not stop it. The results stand in the order of the writes; `onResult` gets each as it comes.
  std::vector<ApplyResult> apply(const TuningPreset& preset, const ApplyHandler& onResult = {});

  // Makes a set active, waits 0.15 s and reads its menu.
  TuningSnapshot selectSlot(std::int64_t slot, TuningLayout layout);

  // Switches between the standard and the advanced menu. Does not wait, not even for the write
  // lock, and does not read.
  void toggleAdvancedMode();

  // Toggles, waits 0.4 s and reads the menu, which tells the new mode.
  TuningSnapshot switchMenuMode();

  // Resets every set, waits 0.4 s and reads the menu.
  TuningSnapshot factoryReset();

  // Sets the steering angle directly: 90 up to the product's maximum (2520 when unknown). Throws
  // noOutputReport, outOfRange, or notAvailable of `sensitivity` for a product without steering,
  // before anything is sent.
  void setRotation(std::int64_t degrees);

  // Sends a packet as it is.
  void sendRaw(const HIDReportPacket& packet);

  // Settings of the one caller that issues commands.
  std::optional<std::uint8_t> commandReportID;  // of the short commands; from the description
  TuningLayout writeLayout = TuningLayout::deviceID;
  bool clearSetupFlagOnWrite = true;
  bool sendAckBurstAfterWrite = false;

 private:
  using Waiter = std::shared_ptr<Semaphore>;

  WheelBase(HIDDeviceInfo info, Clock& clock);

  void handle(const HIDInputReport& report);
  void keep(const IdentityReport& identity);
  void keep(const TuningSnapshot& snapshot);
  void keep(WheelStatus status);
  bool await(std::vector<Waiter> WheelBase::*waiters, const std::vector<HIDReportPacket>& requests,
             Seconds timeout);
  void requireNotDisconnected() const QUORVANE_REQUIRES(lock_);
  std::vector<Waiter> takeAllWaiters() QUORVANE_REQUIRES(lock_);
  TuningSnapshot latestMenu() const;
  HIDReportPacket packetFrom(const TuningSnapshot& menu, TuningParameter parameter,
                             std::int64_t value) const;
  void readUnlessSure();
  void sendValue(TuningParameter parameter, std::int64_t value,
                 const std::optional<MenuPlace>& meantFor);
  void sendAckBurst();

  const HIDDeviceInfo info_;
  const std::optional<FanatecProduct> product_;
  Clock& clock_;
  HIDConnection connection_;
  std::atomic<std::uint64_t> lossesMadeUpFor_{0};  // by reading the menu since

  mutable Mutex lock_;
  bool disconnected_ QUORVANE_GUARDED_BY(lock_) = false;
  std::optional<TuningSnapshot> tuning_ QUORVANE_GUARDED_BY(lock_);
  std::optional<IdentityReport> identity_ QUORVANE_GUARDED_BY(lock_);
  std::optional<WheelStatus> wheelStatus_ QUORVANE_GUARDED_BY(lock_);
  std::vector<Waiter> tuningWaiters_ QUORVANE_GUARDED_BY(lock_);
  std::vector<Waiter> identityWaiters_ QUORVANE_GUARDED_BY(lock_);
  std::shared_ptr<const TuningHandler> onTuningUpdate_ QUORVANE_GUARDED_BY(lock_);
  std::shared_ptr<const StatusHandler> onStatusUpdate_ QUORVANE_GUARDED_BY(lock_);
};

}  // namespace quorvane
