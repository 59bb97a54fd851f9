#include "simulator/simulated_machine.h"

namespace quorvane {
namespace {

constexpr std::int64_t firstBus = 0x01000000;
constexpr std::int64_t portStep = 0x00100000;

}  // namespace

SimulatedMachine::SimulatedMachine(const std::vector<FanatecProduct>& products) {
  for (const FanatecProduct& product : products) {
    devices_.push_back(SimulatedDevice::create(product, SimulatedDevice::Time::real));
    if (products.size() > 1) {
      devices_.back()->setProperty(HIDPropertyKey::locationID,
                                   firstBus + portStep * std::ssize(devices_));
    }
    backend_.add(devices_.back());
    usb_.add(*devices_.back());
  }
}

}  // namespace quorvane
