#pragma once

#include <atomic>
#include <memory>
#include <optional>
#include <utility>

#include "hid/return_code.h"
#include "simulator/simulated_device.h"
#include "support/mutex.h"

namespace quorvane {

// A simulated device with faults of the system around it. Thread-safe.
class FaultyDevice final : public SimulatedDevice {
 public:
  static std::shared_ptr<FaultyDevice> create(const FanatecProduct& product, Time time) {
    return std::shared_ptr<FaultyDevice>(new FaultyDevice(product, time));
  }

  // Makes every later open() fail with the code; `success` ends that.
  void failOpenWith(HIDReturn code) { openFailure_ = code; }

  // Whether ports share a write lock. With false every port gets it at once, as on a system
  // without locks.
  void setHasWriteLocks(bool hasWriteLocks) { hasWriteLocks_ = hasWriteLocks; }

  // Whether ports notice that others open or close the device. False simulates a user who has used
  // up the system's file watches.
  void setTellsOpenings(bool tellsOpenings) { tellsOpenings_ = tellsOpenings; }

  // The result of every port's writeLockHolder(): a process outside this one.
  void setWriteLockHolder(std::optional<NodeHolder> holder) {
    MutexLock held(holderLock_);
    holder_ = std::move(holder);
  }

  // Adds one to possibleLosses() of every open port, as when a reader is too late for a report.
  void delayReaders() { ++losses_; }

  // Plugs a base of another product in place of the one that was unplugged.
  void plugAs(const FanatecProduct& product) {
    for (const auto& [key, value] : SimulatedBase(product).properties()) setProperty(key, value);
    withBase([&](SimulatedBase& base) { base.plug(product); });
  }

  HIDOpenResult open(bool exclusive) override {
    if (openFailure_ != HIDReturnCode::success) return {openFailure_, nullptr};
    HIDOpenResult result = SimulatedDevice::open(exclusive);
    if (result.port) result.port = std::make_unique<Port>(std::move(result.port), *this);
    return result;
  }

 private:
  // The device's port, which keeps the device alive, with the faults.
  class Port final : public HIDPort {
   public:
    Port(std::unique_ptr<HIDPort> port, FaultyDevice& device)
        : port_(std::move(port)), device_(device), lossesBefore_(device.losses_) {}

    ReadResult read(std::span<std::uint8_t> buffer) override { return port_->read(buffer); }
    void interrupt() override { port_->interrupt(); }
    HIDReturn write(std::uint8_t reportID, ByteView data) override {
      return port_->write(reportID, data);
    }
    HIDReturn getReport(HIDReportKind kind, std::uint8_t reportID, std::span<std::uint8_t> buffer,
                        std::size_t& length) override {
      return port_->getReport(kind, reportID, buffer, length);
    }

    std::uint64_t possibleLosses() const override { return device_.losses_ - lossesBefore_; }
    bool tryWriteLock() override { return !device_.hasWriteLocks_ || port_->tryWriteLock(); }
    void endWriteLock() override { port_->endWriteLock(); }
    std::optional<NodeHolder> writeLockHolder() override {
      MutexLock held(device_.holderLock_);
      return device_.holder_;
    }

    void watchForOthers() override {
      isWatching_ = true;
      port_->watchForOthers();
    }
    bool othersMayHaveWritten() override {
      if (isWatching_ && !(device_.tellsOpenings_ && device_.hasWriteLocks_)) isUnknown_ = true;
      return port_->othersMayHaveWritten() || isUnknown_;
    }

   private:
    const std::unique_ptr<HIDPort> port_;
    FaultyDevice& device_;
    const std::uint64_t lossesBefore_;  // of the device when it was opened
    bool isWatching_ = false;
    bool isUnknown_ = false;  // others may have written; once true, it stays true
  };

  using SimulatedDevice::SimulatedDevice;

  std::atomic<HIDReturn> openFailure_ = HIDReturnCode::success;
  std::atomic<bool> hasWriteLocks_ = true;
  std::atomic<bool> tellsOpenings_ = true;
  std::atomic<std::uint64_t> losses_ = 0;
  Mutex holderLock_;
  std::optional<NodeHolder> holder_ QUORVANE_GUARDED_BY(holderLock_);
};

}  // namespace quorvane
