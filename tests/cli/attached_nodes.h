#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tests/simulator/faulty_device.h"

namespace quorvane {

// A simulated base with a device node. `accessible` is what accessible() returns.
class NodeDevice final : public HIDDeviceHandle {
 public:
  NodeDevice(std::string node, bool accessible, std::shared_ptr<FaultyDevice> device)
      : node_(std::move(node)), accessible_(accessible), device_(std::move(device)) {}

  std::optional<HIDProperty> property(std::string_view key) const override {
    return device_->property(key);
  }
  std::vector<HIDElement> elements() const override { return device_->elements(); }
  std::string node() const override { return node_; }
  bool accessible() const override { return accessible_; }
  HIDOpenResult open(bool exclusive) override { return device_->open(exclusive); }

 private:
  std::string node_;
  bool accessible_;
  std::shared_ptr<FaultyDevice> device_;
};

// A backend with a fixed list of such devices.
class AttachedNodes final : public HIDBackend {
 public:
  // Adds a base; without a serial number if that is empty.
  FaultyDevice& add(std::int64_t productID, const std::string& serialNumber, std::string node,
                    bool accessible = true) {
    auto device = FaultyDevice::create(FanatecProduct::lookup(productID).value(),
                                       FaultyDevice::Time::simulated);
    if (!serialNumber.empty()) device->setProperty(HIDPropertyKey::serialNumber, serialNumber);
    FaultyDevice& added = *device;
    devices_.push_back(
        std::make_shared<NodeDevice>(std::move(node), accessible, std::move(device)));
    return added;
  }

  std::vector<std::shared_ptr<HIDDeviceHandle>> devices(
      std::optional<std::int64_t> /*vendorID*/) override {
    return devices_;
  }
  std::unique_ptr<HIDMonitor> monitor(std::optional<std::int64_t> /*vendorID*/) override {
    return nullptr;
  }

 private:
  std::vector<std::shared_ptr<HIDDeviceHandle>> devices_;
};

}  // namespace quorvane
