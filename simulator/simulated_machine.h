#pragma once

#include <memory>

#include "protocol/product.h"
#include "simulator/simulated_backend.h"
#include "simulator/simulated_survey.h"
#include "simulator/simulated_usb_bus.h"

namespace quorvane {

// A machine on which a simulated base is all there is, in real time.
class SimulatedMachine {
 public:
  explicit SimulatedMachine(const FanatecProduct& product);

  HIDBackend& backend() { return backend_; }
  USBBus& usb() { return usb_; }
  HIDSurvey& survey() { return survey_; }
  SimulatedDevice& device() { return *device_; }

 private:
  const std::shared_ptr<SimulatedDevice> device_;
  SimulatedBackend backend_;
  SimulatedUSBBus usb_;
  SimulatedSurvey survey_;
};

}  // namespace quorvane
