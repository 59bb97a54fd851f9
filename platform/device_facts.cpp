#include "platform/device_facts.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/fields.h"
#include "support/text.h"

namespace quorvane {
namespace {

// "0003:00000EB7:00000020", the bus, vendor and product in hexadecimal.
void parseHIDID(std::string_view text, HIDUevent& uevent) {
  const auto parts = split(text, ':');
  if (parts.size() != 3) return;
  const auto bus = parseHexNumber(parts[0]);
  const auto vendor = parseHexNumber(parts[1]);
  const auto product = parseHexNumber(parts[2]);
  if (!bus || !vendor || !product) return;
  uevent.bus = *bus;
  uevent.vendorID = *vendor;
  uevent.productID = *product;
}

constexpr int topByteShift = 24;
constexpr int nibble = 4;

}  // namespace

HIDUevent parseHIDUevent(std::string_view text) {
  std::optional<std::string_view> id;
  std::optional<std::string_view> name;
  std::optional<std::string_view> uniq;
  for (const std::string_view line : split(text, '\n')) {
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos) continue;
    const std::string_view key = line.substr(0, equals);
    const std::string_view value = line.substr(equals + 1);
    if (key == "HID_ID" && !id) id = value;
    if (key == "HID_NAME" && !name) name = value;
    if (key == "HID_UNIQ" && !uniq) uniq = value;
  }
  HIDUevent uevent;
  parseHIDID(id.value_or(""), uevent);
  uevent.name = name.value_or("");
  uevent.uniq = uniq.value_or("");
  return uevent;
}

std::string transportName(std::int64_t bus) {
  constexpr std::array<std::pair<std::int64_t, std::string_view>, 4> names{
      {{0x03, "USB"}, {0x05, "Bluetooth"}, {0x06, "Virtual"}, {0x18, "I2C"}}};
  const auto* const found = std::find_if(names.begin(), names.end(),
                                         [bus](const auto& entry) { return entry.first == bus; });
  return found == names.end() ? std::string() : std::string(found->second);
}

std::optional<std::int64_t> vendorInPath(std::string_view path) {
  std::optional<std::int64_t> nearest;
  for (const std::string_view part : split(path, '/')) {
    const auto fields = split(part.substr(0, part.find('.')), ':');
    if (fields.size() != 3 || fields[0].size() != 4 || fields[1].size() != 4) continue;
    if (const auto vendor = parseHexNumber(fields[1])) nearest = *vendor;
  }
  return nearest;
}

bool changesDevices(std::string_view action) {
  return action == "add" || action == "remove" || action == "change";
}

std::int64_t usbLocationID(std::int64_t bus, std::string_view devpath) {
  std::int64_t location = (bus & 0xFF) << topByteShift;
  int shift = topByteShift - nibble;
  for (const std::string_view port : split(devpath, '.')) {
    if (shift < 0) break;
    location |= (parseInteger(port).value_or(0) & 0xF) << shift;
    shift -= nibble;
  }
  return location;
}

}  // namespace quorvane
