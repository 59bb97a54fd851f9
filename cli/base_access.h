#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cli/context.h"
#include "hid/device_info.h"
#include "session/wheel_base.h"

namespace quorvane {

// The attached bases that match the options (all without --device); commands use the first.
std::vector<HIDDeviceInfo> namedBases(const CommandContext& context);

// The base that the options name, or the first. Throws FanatecError ioFailed when there is none and
// UsageError when several match the name.
HIDDeviceInfo chosenBase(const CommandContext& context);

// RAII: an open session, closed by the destructor.
class OpenBase {
 public:
  using Use = WheelBase::Use;

  // Opens the chosen base with the options' settings. Throws like chosenBase and
  // WheelBase::connect.
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

// Disconnects. Blocks until the device is closed and no handler runs any more.
void closeBase(WheelBase& base);

// Whether the user lacks the permission to open a device.
bool isPermissionFailure(const std::exception& failure);

// Advice in one line: how to get the permission.
extern const char* const permissionHint;

// Advice in one line: what to do when no base is attached.
extern const char* const noBaseHint;

// Advice in one line on a failure; none when there is nothing to do.
std::optional<std::string> nextStep(const std::exception& failure, const GlobalOptions& options);

}  // namespace quorvane
