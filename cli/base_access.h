#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cli/context.h"
#include "hid/device_info.h"
#include "session/wheel_base.h"

namespace quorvane {

// The attached bases that the options name, or all, in the order in which the first is chosen.
std::vector<HIDDeviceInfo> namedBases(const CommandContext& context);

// The base that the options name, or the first. Throws FanatecError ioFailed when there is none and
// UsageError when several answer to the name.
HIDDeviceInfo chosenBase(const CommandContext& context);

// A session that closes when it goes out of scope.
class OpenBase {
 public:
  using Use = WheelBase::Use;

  // Opens the chosen base with the options' settings. Throws as chosenBase and WheelBase::connect.
  explicit OpenBase(const CommandContext& context, Use use = Use::reading)
      : OpenBase(context, chosenBase(context), use) {}
  OpenBase(const CommandContext& context, HIDDeviceInfo device, Use use = Use::reading);
  ~OpenBase();
  OpenBase(const OpenBase&) = delete;
  OpenBase& operator=(const OpenBase&) = delete;

  WheelBase& operator*() const { return *base_; }
  WheelBase* operator->() const { return base_.get(); }

 private:
  std::shared_ptr<WheelBase> base_;
};

// Disconnects, and waits until the device is closed and no handler runs any more.
void closeBase(WheelBase& base);

// Whether the failure is that this user may not open a device.
bool isPermissionFailure(const std::exception& failure);

// How to get the permission; one line.
extern const char* const permissionHint;

// What to do when no base is there; one line.
extern const char* const noBaseHint;

// One line on what to do about a failure, where there is something to do.
std::optional<std::string> nextStep(const std::exception& failure, const GlobalOptions& options);

}  // namespace quorvane
