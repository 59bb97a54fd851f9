#include "simulator/simulated_machine.h"

#include "simulator/simulated_state_file.h"

namespace quorvane {
namespace {

constexpr std::int64_t firstBus = 0x01000000;
constexpr std::int64_t portStep = 0x00100000;

}  // namespace

SimulatedMachine::SimulatedMachine(const std::vector<FanatecProduct>& products)
    : products_(products) {
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

void SimulatedMachine::keepStateIn(const std::filesystem::path& file,
                                   const MenuKeeper::Complain& complain) {
  const SimulatedStateFile states(file, products_);
  for (std::size_t number = 0; number < devices_.size(); ++number) {
    devices_[number]->keepMenuIn(states.storage(number), complain);
  }
}

}  // namespace quorvane
