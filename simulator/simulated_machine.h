#pragma once

#include <memory>
#include <vector>

#include "protocol/product.h"
#include "simulator/simulated_backend.h"
#include "simulator/simulated_survey.h"
#include "simulator/simulated_usb_bus.h"

namespace quorvane {

// A machine on which simulated bases are all there is, in real time.
class SimulatedMachine {
 public:
  explicit SimulatedMachine(const FanatecProduct& product)
      : SimulatedMachine(std::vector{product}) {}

  // One base for each product, at least one. Several hang on ports of their own of one USB bus.
  explicit SimulatedMachine(const std::vector<FanatecProduct>& products);

  HIDBackend& backend() { return backend_; }
  USBBus& usb() { return usb_; }
  HIDSurvey& survey() { return survey_; }

  std::size_t deviceCount() const { return devices_.size(); }

  // The base with this place in the list of products.
  SimulatedDevice& device(std::size_t number = 0) { return *devices_.at(number); }

 private:
  std::vector<std::shared_ptr<SimulatedDevice>> devices_;
  SimulatedBackend backend_;
  SimulatedUSBBus usb_;
  SimulatedSurvey survey_;
};

}  // namespace quorvane
