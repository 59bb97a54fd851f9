#pragma once

#include <filesystem>
#include <memory>
#include <vector>

#include "hid/platform.h"
#include "protocol/product.h"
#include "simulator/simulated_backend.h"
#include "simulator/simulated_survey.h"
#include "simulator/simulated_usb_bus.h"

namespace quorvane {

// Backend, USB bus and survey of a machine whose only devices are simulated bases, in real time.
class SimulatedMachine {
 public:
  explicit SimulatedMachine(const FanatecProduct& product)
      : SimulatedMachine(std::vector{product}) {}

  // One base for each product, at least one. Several share one USB bus, each on its own port.
  explicit SimulatedMachine(const std::vector<FanatecProduct>& products);

  // Loads the bases' menus from the file and stores every change there (SimulatedStateFile).
  // Calls `complain` with the reason when a change cannot be stored, on the thread that sent it.
  // Call before anything opens a base. Throws FileError and DecodingError.
  void keepStateIn(const std::filesystem::path& file, const MenuKeeper::Complain& complain);

  Platform platform(Clock& clock = Clock::system()) { return {backend_, usb_, clock, survey_}; }

  std::size_t deviceCount() const { return devices_.size(); }

  // The base of the product at this index of the list.
  SimulatedDevice& device(std::size_t number = 0) { return *devices_.at(number); }

 private:
  std::vector<FanatecProduct> products_;
  std::vector<std::shared_ptr<SimulatedDevice>> devices_;
  SimulatedBackend backend_;
  SimulatedUSBBus usb_;
  SimulatedSurvey survey_;
};

}  // namespace quorvane
