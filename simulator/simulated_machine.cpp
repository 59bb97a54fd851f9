#include "simulator/simulated_machine.h"

namespace quorvane {

SimulatedMachine::SimulatedMachine(const FanatecProduct& product)
    : device_(SimulatedDevice::create(product, SimulatedDevice::Time::real)), usb_(*device_) {
  backend_.add(device_);
}

}  // namespace quorvane
