#include "simulator/simulated_usb_bus.h"

namespace quorvane {
namespace {

class SimulatedUSBDevice final : public USBDevice {
 public:
  explicit SimulatedUSBDevice(SimulatedDevice& device) : device_(device) {}

  std::optional<std::int64_t> vendorID() const override { return number(HIDPropertyKey::vendorID); }
  std::optional<std::int64_t> productID() const override {
    return number(HIDPropertyKey::productID);
  }
  std::optional<std::int64_t> locationID() const override {
    return number(HIDPropertyKey::locationID);
  }

  void reset() override {
    device_.unplug();
    device_.plug();
  }

 private:
  std::optional<std::int64_t> number(std::string_view key) const {
    const auto property = device_.property(key);
    const auto* const value = property ? std::get_if<std::int64_t>(&*property) : nullptr;
    return value == nullptr ? std::nullopt : std::optional(*value);
  }

  SimulatedDevice& device_;
};

}  // namespace

std::vector<std::unique_ptr<USBDevice>> SimulatedUSBBus::devices() {
  std::vector<std::unique_ptr<USBDevice>> result;
  for (SimulatedDevice* const device : devices_) {
    if (device->isPlugged()) result.push_back(std::make_unique<SimulatedUSBDevice>(*device));
  }
  return result;
}

}  // namespace quorvane
