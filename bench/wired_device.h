#pragma once

#include <memory>
#include <utility>

#include "bench/simulated_description.h"
#include "hid/linux/hidraw_port.h"
#include "support/unique_fd.h"

namespace quorvane {

// A device whose node is one end of a wire(). It can be opened only once.
class WiredDevice final : public SimulatedDescription {
 public:
  explicit WiredDevice(UniqueFd fd) : fd_(std::move(fd)) {}

  HIDOpenResult open(bool /*exclusive*/) override {
    return {HIDReturnCode::success, std::make_unique<HidrawPort>(std::move(fd_), true)};
  }

 private:
  UniqueFd fd_;
};

}  // namespace quorvane
