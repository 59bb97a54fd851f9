#pragma once

#include <string>
#include <utility>

#include "hid/port.h"

namespace quorvane {

// A hidraw node, described from sysfs and opened through /dev.
class HidrawDevice final : public HIDDeviceHandle {
 public:
  HidrawDevice(std::string node, HIDProperties properties)
      : node_(std::move(node)), properties_(std::move(properties)) {}

  std::optional<HIDProperty> property(std::string_view key) const override;
  std::vector<HIDElement> elements() const override { return parsedDescriptor().elements; }
  std::string node() const override { return node_; }
  bool accessible() const override;

  // Takes an advisory lock (flock) on the node: exclusive or shared, as `exclusive` says.
  HIDOpenResult open(bool exclusive) override;

 private:
  HIDElements parsedDescriptor() const;

  std::string node_;
  HIDProperties properties_;
};

}  // namespace quorvane
