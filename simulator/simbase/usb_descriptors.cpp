#include "simulator/simbase/usb_descriptors.h"

#include <string>

namespace quorvane {
namespace {

constexpr std::uint8_t manufacturerString = 1;
constexpr std::uint8_t productString = 2;
constexpr std::uint8_t serialString = 3;
constexpr std::uint8_t packetSize = 64;
constexpr std::uint8_t hidClass = 0x03;
constexpr std::uint8_t interruptTransfer = 0x03;

std::uint8_t low(std::size_t value) { return static_cast<std::uint8_t>(value); }
std::uint8_t high(std::size_t value) { return static_cast<std::uint8_t>(value >> 8U); }

Bytes deviceDescriptor(const SimulatedBase& base) {
  const auto vendor = static_cast<std::size_t>(Fanatec::vendorID);
  const auto product = static_cast<std::size_t>(base.productID());
  const std::uint8_t serial = base.serialNumber.empty() ? std::uint8_t{0} : serialString;
  return {18,
          USBDescriptorType::device,
          0x00,
          0x02,  // USB 2.0
          0,
          0,
          0,
          packetSize,
          low(vendor),
          high(vendor),
          low(product),
          high(product),
          0x00,
          0x01,  // release 1.00
          manufacturerString,
          productString,
          serial,
          1};
}

Bytes hidDescriptor() {
  const std::size_t length = SimulatedBase::reportDescriptor().size();
  return {9, USBDescriptorType::hid,    0x11,        0x01,        0,
          1, USBDescriptorType::report, low(length), high(length)};
}

void append(Bytes& bytes, const Bytes& more) {
  bytes.insert(bytes.end(), more.begin(), more.end());
}

Bytes configurationDescriptor() {
  constexpr std::uint8_t busPowered100mA = 50;
  Bytes bytes{9, USBDescriptorType::configuration, 0, 0, 1, 1, 0, 0x80, busPowered100mA};
  append(bytes, {9, USBDescriptorType::interface, 0, 0, 2, hidClass, 0, 0, 0});
  append(bytes, hidDescriptor());
  for (const std::uint8_t address : {std::uint8_t{0x81}, std::uint8_t{0x01}}) {
    append(bytes, {7, USBDescriptorType::endpoint, address, interruptTransfer, packetSize, 0, 1});
  }
  bytes[2] = low(bytes.size());
  bytes[3] = high(bytes.size());
  return bytes;
}

// ASCII as UTF-16.
Bytes textDescriptor(std::string_view text) {
  Bytes bytes{low(2 + 2 * text.size()), USBDescriptorType::string};
  for (const char c : text) append(bytes, {static_cast<std::uint8_t>(c), 0});
  return bytes;
}

std::optional<Bytes> stringDescriptor(const SimulatedBase& base, std::uint8_t index) {
  switch (index) {
    case 0:
      return Bytes{4, USBDescriptorType::string, 0x09, 0x04};  // English (United States)
    case manufacturerString:
      return textDescriptor("Fanatec");
    case productString:
      return textDescriptor(base.product().name);
    case serialString:
      if (base.serialNumber.empty()) return std::nullopt;
      return textDescriptor(base.serialNumber);
    default:
      return std::nullopt;
  }
}

}  // namespace

std::optional<Bytes> usbDescriptor(const SimulatedBase& base, std::uint8_t type,
                                   std::uint8_t index) {
  switch (type) {
    case USBDescriptorType::device:
      return deviceDescriptor(base);
    case USBDescriptorType::configuration:
      return configurationDescriptor();
    case USBDescriptorType::string:
      return stringDescriptor(base, index);
    case USBDescriptorType::hid:
      return hidDescriptor();
    case USBDescriptorType::report:
      return SimulatedBase::reportDescriptor();
    default:
      return std::nullopt;
  }
}

}  // namespace quorvane
