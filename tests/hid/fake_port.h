#pragma once

#include <fmt/format.h>

#include <algorithm>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "hid/port.h"
#include "support/mutex.h"

namespace quorvane {

// A device that records every platform operation and returns the results that the test has set. At
// most one open port at a time. Thread-safe.
class FakeDevice final : public HIDDeviceHandle, public std::enable_shared_from_this<FakeDevice> {
 public:
  // Sets the properties that a platform derives from this descriptor.
  void describe(const Bytes& descriptor) { addDescriptorProperties(properties_, descriptor); }
  void setProperty(std::string_view key, HIDProperty value) {
    properties_.insert_or_assign(std::string(key), std::move(value));
  }

  // "open shared", "SetReport 1f: 1f 01", "GetReport input 31: 1f 00", "close", in order.
  std::vector<std::string> calls() const {
    MutexLock held(lock_);
    return calls_;
  }

  void failOpenWith(HIDReturn code) {
    MutexLock held(lock_);
    openCode_ = code;
  }

  void failWritesWith(HIDReturn code) {
    MutexLock held(lock_);
    writeCode_ = code;
  }

  // From now on writes block until this many writes have begun.
  void gatherWrites(int count) {
    MutexLock held(lock_);
    gathered_ = count;
  }

  // The result of GetReport: its code, the bytes put into the buffer, and the length returned.
  void answerGetReport(HIDReturn code, Bytes bytes, std::size_t length) {
    MutexLock held(lock_);
    getCode_ = code;
    getBytes_ = std::move(bytes);
    getLength_ = length;
  }

  // Delivers one report. Blocks until the reader has handled it or has ended.
  void deliver(std::uint8_t reportID, Bytes bytes) {
    MutexLock held(lock_);
    reports_.push_back({reportID, std::move(bytes)});
    changed_.notifyAll();
    while (reading_ && !(idle_ && reports_.empty())) changed_.wait(lock_);
  }

  // From now on every read returns this report at once.
  void stream(std::uint8_t reportID, Bytes bytes) {
    MutexLock held(lock_);
    streamed_ = Report{reportID, std::move(bytes)};
    changed_.notifyAll();
  }

  // Reads fail from now on. Blocks until the reader has ended.
  void leave() {
    MutexLock held(lock_);
    gone_ = true;
    changed_.notifyAll();
    while (reading_) changed_.wait(lock_);
  }

  // Called on the reader thread after the device has left, before the read fails.
  void atLeave(std::function<void()> event) {
    MutexLock held(lock_);
    atLeave_ = std::move(event);
  }

  int openPorts() const {
    MutexLock held(lock_);
    return openPorts_;
  }

  void waitUntilClosed() {
    MutexLock held(lock_);
    while (openPorts_ > 0) changed_.wait(lock_);
  }

  // Whether the reader's current read is readBatched(). Valid after deliver().
  bool relaxed() const {
    MutexLock held(lock_);
    return relaxed_;
  }

  // How often hurry() was called.
  int hurries() const {
    MutexLock held(lock_);
    return hurries_;
  }

  // The size of the reader's buffer. Blocks until the first read.
  std::size_t readBufferSize() {
    MutexLock held(lock_);
    while (readBufferSize_ == 0) changed_.wait(lock_);
    return readBufferSize_;
  }

  std::optional<HIDProperty> property(std::string_view key) const override {
    const auto found = properties_.find(key);
    if (found == properties_.end()) return std::nullopt;
    return found->second;
  }
  std::vector<HIDElement> elements() const override { return {}; }
  std::string node() const override { return {}; }
  bool accessible() const override { return true; }

  HIDOpenResult open(bool exclusive) override {
    MutexLock held(lock_);
    calls_.emplace_back(exclusive ? "open exclusive" : "open shared");
    if (openCode_ != HIDReturnCode::success) return {openCode_, nullptr};
    ++openPorts_;
    reading_ = true;
    idle_ = false;
    reports_.clear();
    return {HIDReturnCode::success, std::make_unique<Port>(shared_from_this())};
  }

 private:
  struct Report {
    std::uint8_t reportID = 0;
    Bytes bytes;
  };

  class Port final : public HIDPort {
   public:
    explicit Port(std::shared_ptr<FakeDevice> device) : device_(std::move(device)) {}
    ~Port() override { device_->portClosed(); }
    Port(const Port&) = delete;
    Port& operator=(const Port&) = delete;

    ReadResult read(std::span<std::uint8_t> buffer) override {
      return device_->read(buffer, interrupted_, false);
    }
    ReadResult readBatched(std::span<std::uint8_t> buffer) override {
      return device_->read(buffer, interrupted_, true);
    }
    void hurry() override { device_->hurry(); }
    void interrupt() override { device_->interrupt(interrupted_); }
    HIDReturn write(std::uint8_t reportID, ByteView data) override {
      return device_->write(reportID, data);
    }
    HIDReturn getReport(HIDReportKind kind, std::uint8_t reportID, std::span<std::uint8_t> buffer,
                        std::size_t& length) override {
      return device_->getReport(kind, reportID, buffer, length);
    }

   private:
    const std::shared_ptr<FakeDevice> device_;
    bool interrupted_ = false;  // guarded by the device's lock
  };

  HIDPort::ReadResult read(std::span<std::uint8_t> buffer, const bool& interrupted, bool relaxed) {
    std::function<void()> atLeave;
    {
      MutexLock held(lock_);
      relaxed_ = relaxed;
      readBufferSize_ = buffer.size();
      idle_ = true;
      changed_.notifyAll();
      while (!interrupted && !gone_ && reports_.empty() && !streamed_) changed_.wait(lock_);
      idle_ = false;
      if (!interrupted && !gone_) return take(buffer);
      reading_ = false;
      changed_.notifyAll();
      if (interrupted) return {HIDReturnCode::aborted, 0, 0};
      atLeave = atLeave_;
    }
    if (atLeave) atLeave();
    return {HIDReturnCode::noDevice, 0, 0};
  }

  HIDPort::ReadResult take(std::span<std::uint8_t> buffer) QUORVANE_REQUIRES(lock_) {
    Report report;
    if (reports_.empty()) {
      report = *streamed_;
    } else {
      report = std::move(reports_.front());
      reports_.pop_front();
    }
    const std::size_t length = std::min(report.bytes.size(), buffer.size());
    std::copy_n(report.bytes.begin(), length, buffer.begin());
    return {HIDReturnCode::success, report.reportID, length};
  }

  void interrupt(bool& interrupted) {
    MutexLock held(lock_);
    interrupted = true;
    changed_.notifyAll();
  }

  void hurry() {
    MutexLock held(lock_);
    ++hurries_;
  }

  HIDReturn write(std::uint8_t reportID, ByteView data) {
    MutexLock held(lock_);
    calls_.push_back(fmt::format("SetReport {:02x}: {}", reportID, hexDump(data)));
    ++writing_;
    changed_.notifyAll();
    while (writing_ < gathered_) changed_.wait(lock_);
    return writeCode_;
  }

  HIDReturn getReport(HIDReportKind kind, std::uint8_t reportID, std::span<std::uint8_t> buffer,
                      std::size_t& length) {
    MutexLock held(lock_);
    const bool feature = kind == HIDReportKind::feature;
    calls_.push_back(fmt::format("GetReport {} {}: {}", feature ? "feature" : "input", reportID,
                                 hexDump(buffer.first(length))));
    if (getCode_ != HIDReturnCode::success) return getCode_;
    std::copy_n(getBytes_.begin(), std::min(getBytes_.size(), buffer.size()), buffer.begin());
    length = getLength_;
    return HIDReturnCode::success;
  }

  void portClosed() {
    MutexLock held(lock_);
    calls_.emplace_back("close");
    --openPorts_;
    changed_.notifyAll();
  }

  HIDProperties properties_;

  mutable Mutex lock_;
  Condition changed_;
  std::vector<std::string> calls_ QUORVANE_GUARDED_BY(lock_);
  HIDReturn openCode_ QUORVANE_GUARDED_BY(lock_) = HIDReturnCode::success;
  HIDReturn writeCode_ QUORVANE_GUARDED_BY(lock_) = HIDReturnCode::success;
  HIDReturn getCode_ QUORVANE_GUARDED_BY(lock_) = HIDReturnCode::success;
  Bytes getBytes_ QUORVANE_GUARDED_BY(lock_);
  std::size_t getLength_ QUORVANE_GUARDED_BY(lock_) = 0;
  std::deque<Report> reports_ QUORVANE_GUARDED_BY(lock_);
  std::optional<Report> streamed_ QUORVANE_GUARDED_BY(lock_);
  std::size_t readBufferSize_ QUORVANE_GUARDED_BY(lock_) = 0;
  int openPorts_ QUORVANE_GUARDED_BY(lock_) = 0;
  int writing_ QUORVANE_GUARDED_BY(lock_) = 0;  // writes begun so far
  int gathered_ QUORVANE_GUARDED_BY(lock_) = 0;
  bool reading_ QUORVANE_GUARDED_BY(lock_) = false;  // a reader is running
  bool relaxed_ QUORVANE_GUARDED_BY(lock_) = false;  // the latest read is readBatched()
  int hurries_ QUORVANE_GUARDED_BY(lock_) = 0;
  bool idle_ QUORVANE_GUARDED_BY(lock_) = false;  // the reader waits in a read
  bool gone_ QUORVANE_GUARDED_BY(lock_) = false;
  std::function<void()> atLeave_ QUORVANE_GUARDED_BY(lock_);
};

}  // namespace quorvane
