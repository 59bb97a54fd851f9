#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "hid/port.h"

namespace quorvane {

// Another device whose packets are shown to a function right before they are sent.
class WatchedDevice final : public HIDDeviceHandle {
 public:
  using Watch = std::function<void(ByteView packet)>;

  WatchedDevice(std::shared_ptr<HIDDeviceHandle> device, Watch watch)
      : device_(std::move(device)), watch_(std::move(watch)) {}

  std::optional<HIDProperty> property(std::string_view key) const override {
    return device_->property(key);
  }
  std::vector<HIDElement> elements() const override { return device_->elements(); }
  std::string node() const override { return device_->node(); }
  bool accessible() const override { return device_->accessible(); }

  HIDOpenResult open(bool exclusive) override {
    HIDOpenResult result = device_->open(exclusive);
    if (result.port) result.port = std::make_unique<Port>(std::move(result.port), watch_);
    return result;
  }

 private:
  class Port final : public HIDPort {
   public:
    Port(std::unique_ptr<HIDPort> port, Watch watch)
        : port_(std::move(port)), watch_(std::move(watch)) {}

    ReadResult read(std::span<std::uint8_t> buffer) override { return port_->read(buffer); }
    void interrupt() override { port_->interrupt(); }
    HIDReturn write(std::uint8_t reportID, ByteView data) override {
      watch_(data);
      return port_->write(reportID, data);
    }
    HIDReturn getReport(HIDReportKind kind, std::uint8_t reportID, std::span<std::uint8_t> buffer,
                        std::size_t& length) override {
      return port_->getReport(kind, reportID, buffer, length);
    }
    bool tryWriteLock() override { return port_->tryWriteLock(); }
    void endWriteLock() override { port_->endWriteLock(); }
    void watchForOthers() override { port_->watchForOthers(); }
    bool othersMayHaveWritten() override { return port_->othersMayHaveWritten(); }

   private:
    const std::unique_ptr<HIDPort> port_;
    const Watch watch_;
  };

  const std::shared_ptr<HIDDeviceHandle> device_;
  const Watch watch_;
};

}  // namespace quorvane
