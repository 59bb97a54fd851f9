#pragma once

#include <cstdint>
#include <optional>

#include "simulator/simulated_base.h"
#include "support/bytes.h"

namespace quorvane {

// Descriptor types of the USB 2.0 and HID 1.11 specifications.
namespace USBDescriptorType {
inline constexpr std::uint8_t device = 0x01;
inline constexpr std::uint8_t configuration = 0x02;
inline constexpr std::uint8_t string = 0x03;
inline constexpr std::uint8_t interface = 0x04;
inline constexpr std::uint8_t endpoint = 0x05;
inline constexpr std::uint8_t hid = 0x21;
inline constexpr std::uint8_t report = 0x22;
}  // namespace USBDescriptorType

// A descriptor of the base as a full-speed USB device with one HID interface (interrupt endpoints
// 1 IN and 1 OUT); none for a type or string index that the device does not have.
std::optional<Bytes> usbDescriptor(const SimulatedBase& base, std::uint8_t type,
                                   std::uint8_t index);

}  // namespace quorvane
