#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hid/port.h"
#include "simulator/simulated_base.h"

namespace quorvane {

// A device with the description of a simulated base; subclasses implement open().
class SimulatedDescription : public HIDDeviceHandle {
 public:
  std::optional<HIDProperty> property(std::string_view key) const override {
    const auto found = properties_.find(key);
    if (found == properties_.end()) return std::nullopt;
    return found->second;
  }
  std::vector<HIDElement> elements() const override { return {}; }
  std::string node() const override { return {}; }
  bool accessible() const override { return true; }

 private:
  const HIDProperties properties_ = SimulatedBase(*FanatecProduct::lookup(0x0020)).properties();
};

}  // namespace quorvane
