#pragma once

#include <filesystem>
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

  // The bases have what the file keeps, and keep there what is changed (SimulatedStateFile).
  // `complain` is told why a change could not be kept, on the thread that sent it. Called before
  // anything opens a base. Throws FileError and DecodingError.
  void keepStateIn(const std::filesystem::path& file, const MenuKeeper::Complain& complain);

  HIDBackend& backend() { return backend_; }
  USBBus& usb() { return usb_; }
  HIDSurvey& survey() { return survey_; }

  std::size_t deviceCount() const { return devices_.size(); }

  // The base with this place in the list of products.
  SimulatedDevice& device(std::size_t number = 0) { return *devices_.at(number); }

 private:
  std::vector<FanatecProduct> products_;
  std::vector<std::shared_ptr<SimulatedDevice>> devices_;
  SimulatedBackend backend_;
  SimulatedUSBBus usb_;
  SimulatedSurvey survey_;
};

}  // namespace quorvane
