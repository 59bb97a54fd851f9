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

// The session with one wheel base: dispatches the base's reports, keeps the latest of each kind and
// performs reads, writes and menu commands.
//
// The connection may batch reports: those that the base sends without a request, for instance while
// the user operates its own menu, may arrive up to 30 ms late. Hold a LowLatencyScope of the
// connection to get them at once. Answers are never delayed.
//
// Always held by a shared pointer (WheelBase::create): a report that is being handled keeps the
// session alive after the last owner released it. Operations block for the pauses and timeouts
// given; do not call them on the connection's reader thread. There are no retries.
//
// Within a session the caller must serialize writes. Across sessions and programs each set(),
// selectSlot(), switchMenuMode() and factoryReset() holds the device's write lock (WriteLock): it
// waits up to `readTimeout` for the lock, then throws timeout.
//
// Any thread may get the latest reports, also after disconnect(). A session is for one connection:
// after disconnect(), or when the base is gone, create a new one.
class WheelBase : public std::enable_shared_from_this<WheelBase> {
 public:
  using TuningHandler = std::function<void(const TuningSnapshot&)>;
  using StatusHandler = std::function<void(WheelBase&)>;

  // The result of writing one value of a preset.
  struct ApplyResult {
    TuningParameter parameter = TuningParameter::slot;
    std::int64_t value = 0;            // the value to write, in display units
    std::optional<std::string> error;  // none on success, else the error's description

    bool operator==(const ApplyResult&) const = default;
  };
  using ApplyHandler = std::function<void(const ApplyResult&)>;

  // The timeout of the session's own reads.
  static constexpr Seconds readTimeout{2.0};

  // Performs no I/O. The clock must outlive the session.
  static std::shared_ptr<WheelBase> create(HIDDeviceInfo info, Clock& clock = Clock::system());

  WheelBase(const WheelBase&) = delete;
  WheelBase& operator=(const WheelBase&) = delete;

  const HIDDeviceInfo& info() const { return info_; }
  const std::optional<FanatecProduct>& product() const { return product_; }
  HIDConnection& connection() { return connection_; }

  // Handlers called on the reader thread: after each tuning report, and when the attached wheel or
  // its firmware version changed. An empty function removes one. May be set at any time.
  void setOnTuningUpdate(TuningHandler handler);
  void setOnStatusUpdate(StatusHandler handler);

  // What a session is mainly for. One for reading does not watch for other programs, so it closes
  // faster. It may write too, but then reads the menu before each value.
  enum class Use { reading, writing };

  // Opens the connection (shared) and subscribes to its reports; sends nothing to the base. Throws
  // FanatecError ioFailed, or notConnected when disconnect() was called before or meanwhile.
  void connect(Use use = Use::writing);

  // Closes the connection for good. Waiting reads throw notConnected at once. May be called from
  // any thread at any time.
  void disconnect();

  // The latest report of each kind; none before the first.
  std::optional<TuningSnapshot> tuning() const;
  std::optional<IdentityReport> identity() const;
  std::optional<std::uint16_t> wheelID() const;          // of the attached steering wheel
  std::optional<std::uint16_t> firmwareVersion() const;  // reported with the wheel's ID

  // Requests a report and waits for it. Throws FanatecError timeout, notConnected (also when
  // disconnect() is called meanwhile), or the error of the send.
  TuningSnapshot fetchTuning(Seconds timeout);
  IdentityReport fetchIdentity(Seconds timeout);

  // The menu that the last set() replaced a byte of; none when it sent no menu. For the caller that
  // issues the writes.
  const std::optional<TuningSnapshot>& menuBeforeSet() const { return menuBeforeSet_; }

  // The packet to write the value, based on the latest menu. Throws noTuningSnapshot, outOfRange or
  // notAvailable.
  HIDReportPacket packet(TuningParameter parameter, std::int64_t value) const;

  // Writes one value. `slot` switches the set instead, without a check of the number or the result.
  //
  // Reads the menu first if another program may have written, or a report may have been lost, since
  // the last read. With `meantFor`, throws invalidReport instead of writing if the base is in
  // another set or mode. With `verify`, waits 0.25 s, reads the menu back and returns it, and
  // throws writeIgnored when it has another byte; else returns none. Also throws what packet(),
  // WriteLock, HIDConnection::send() and fetchTuning() throw.
  std::optional<TuningSnapshot> set(TuningParameter parameter, std::int64_t value, bool verify,
                                    const std::optional<MenuPlace>& meantFor = {});

  // Writes and verifies the preset's values one by one (TuningPreset::applicable). Continues after
  // an error. Returns the results in the order of the writes; calls `onResult` after each.
  std::vector<ApplyResult> apply(const TuningPreset& preset, const ApplyHandler& onResult = {});

  // Makes a set active, waits 0.15 s and reads the menu.
  TuningSnapshot selectSlot(std::int64_t slot, TuningLayout layout);

  // Switches between the standard and the advanced menu. Does not wait, not even for the write
  // lock, and does not read.
  void toggleAdvancedMode();

  // Like toggleAdvancedMode() with the write lock held; then waits 0.4 s and reads the menu, which
  // contains the new mode.
  TuningSnapshot switchMenuMode();

  // Resets every set, waits 0.4 s and reads the menu.
  TuningSnapshot factoryReset();

  // Sets the steering angle outside the menu: 90 degrees up to the product's maximum (2520 for an
  // unknown product). Before anything is sent, throws noOutputReport, outOfRange, or, for a product
  // without steering, notAvailable with `sensitivity`. Does not take the write lock.
  void setRotation(std::int64_t degrees);

  // Sends a packet unchanged, without the write lock.
  void sendRaw(const HIDReportPacket& packet);

  // Settings. Not thread-safe: for the caller that issues the commands.
  std::optional<std::uint8_t> commandReportID;  // initially HIDDeviceInfo::commandReportID()
  TuningLayout writeLayout = TuningLayout::deviceID;
  bool clearSetupFlagOnWrite = true;
  bool sendAckBurstAfterWrite = false;

 private:
  using Waiter = std::shared_ptr<Semaphore>;

  WheelBase(HIDDeviceInfo info, Clock& clock);

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
  std::atomic<std::uint64_t> lossesMadeUpFor_{0};  // possibleLosses() before the last read
  std::optional<TuningSnapshot> menuBeforeSet_;

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
