#include "cli/base_access.h"

#include <algorithm>
#include <iterator>
#include <system_error>
#include <utility>

#include "protocol/error.h"
#include "session/candidates.h"
#include "support/text.h"

namespace quorvane {

const char* const permissionHint =
    "The udev rule 70-quorvane.rules that grants you the device is missing, or does not work: see "
    "quorvanectl doctor. Install it with: quorvanectl udev-rule --install";

const char* const noBaseHint = "No base found. Power it on in PC mode and connect it.";

std::vector<HIDDeviceInfo> namedBases(const CommandContext& context) {
  return wheelBaseCandidates(HIDEnumerator::devices(Fanatec::vendorID, context.world.backend),
                             context.options.device);
}

HIDDeviceInfo chosenBase(const CommandContext& context) {
  std::vector<HIDDeviceInfo> bases = namedBases(context);
  const std::string& which = context.options.device;
  if (bases.empty()) {
    throw FanatecError::ioFailed(describeHIDReturn(HIDReturnCode::noDevice),
                                 HIDReturnCode::noDevice);
  }
  if (!which.empty() && bases.size() > 1) {
    std::string message = "Several bases answer to " + oneLine(which) + ". Name one by its node:";
    for (const HIDDeviceInfo& base : bases) {
      message += "\n  " + oneLine(base.device->node() + "  " + base.id + "  " + base.displayName());
    }
    throw UsageError(message);
  }
  return std::move(bases.front());
}

OpenBase::OpenBase(const CommandContext& context, HIDDeviceInfo device, Use use)
    : base_(WheelBase::create(std::move(device), context.world.clock)) {
  if (context.options.reportID) base_->commandReportID = context.options.reportID;
  if (context.options.layout) base_->writeLayout = *context.options.layout;
  base_->connect(use);
}

OpenBase::~OpenBase() { closeBase(*base_); }

void closeBase(WheelBase& base) {
  base.disconnect();
  base.connection().join();
}

bool isPermissionFailure(const std::exception& failure) {
  if (const auto* const error = dynamic_cast<const FanatecError*>(&failure)) {
    return error->openCode() == HIDReturnCode::notPermitted;
  }
  if (const auto* const error = dynamic_cast<const std::system_error*>(&failure)) {
    return hidReturnFromErrno(error->code().value()) == HIDReturnCode::notPermitted;
  }
  return false;
}

std::optional<std::string> nextStep(const std::exception& failure, const GlobalOptions& options) {
  if (isPermissionFailure(failure)) return permissionHint;
  const auto* const error = dynamic_cast<const FanatecError*>(&failure);
  if (error == nullptr || error->openCode() != HIDReturnCode::noDevice) return std::nullopt;
  if (options.device.empty()) return noBaseHint;
  return "No base answers to \"" + oneLine(options.device) +
         "\". The attached ones are listed by: quorvanectl devices";
}

}  // namespace quorvane
