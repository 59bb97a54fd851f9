#pragma once

#include <vector>

#include "support/bytes.h"

namespace quorvane {

// Report descriptors for the tests of several units, one entry per item.
using DescriptorText = std::vector<Bytes>;

inline Bytes joined(const DescriptorText& items) {
  Bytes bytes;
  for (const Bytes& item : items) bytes.insert(bytes.end(), item.begin(), item.end());
  return bytes;
}

// A keyboard without report IDs: modifiers, lamps and an array of six keys.
inline DescriptorText keyboardText() {
  return {
      {0x05, 0x01},  // Usage Page (Generic Desktop)
      {0x09, 0x06},  // Usage (Keyboard)
      {0xA1, 0x01},  // Collection (Application)
      {0x05, 0x07},  //   Usage Page (Keyboard)
      {0x19, 0xE0},  //   Usage Minimum (224)
      {0x29, 0xE7},  //   Usage Maximum (231)
      {0x15, 0x00},  //   Logical Minimum (0)
      {0x25, 0x01},  //   Logical Maximum (1)
      {0x75, 0x01},  //   Report Size (1)
      {0x95, 0x08},  //   Report Count (8)
      {0x81, 0x02},  //   Input (Data, Variable, Absolute)
      {0x95, 0x01},  //   Report Count (1)
      {0x75, 0x08},  //   Report Size (8)
      {0x81, 0x01},  //   Input (Constant)
      {0x95, 0x05},  //   Report Count (5)
      {0x75, 0x01},  //   Report Size (1)
      {0x05, 0x08},  //   Usage Page (Lamps)
      {0x19, 0x01},  //   Usage Minimum (1)
      {0x29, 0x05},  //   Usage Maximum (5)
      {0x91, 0x02},  //   Output (Data, Variable, Absolute)
      {0x95, 0x01},  //   Report Count (1)
      {0x75, 0x03},  //   Report Size (3)
      {0x91, 0x01},  //   Output (Constant)
      {0x95, 0x06},  //   Report Count (6)
      {0x75, 0x08},  //   Report Size (8)
      {0x15, 0x00},  //   Logical Minimum (0)
      {0x25, 0x65},  //   Logical Maximum (101)
      {0x05, 0x07},  //   Usage Page (Keyboard)
      {0x19, 0x00},  //   Usage Minimum (0)
      {0x29, 0x65},  //   Usage Maximum (101)
      {0x81, 0x00},  //   Input (Data, Array)
      {0xC0},        // End Collection
  };
}

// A joystick with report IDs: a signed axis, ten buttons and a relative dial on input report 1, an
// output report 2 of seven bytes and a feature report 3 of three.
inline DescriptorText joystickText() {
  return {
      {0x05, 0x01},        // Usage Page (Generic Desktop)
      {0x09, 0x04},        // Usage (Joystick)
      {0xA1, 0x01},        // Collection (Application)
      {0x85, 0x01},        //   Report ID (1)
      {0x09, 0x30},        //   Usage (X)
      {0x16, 0x00, 0x80},  //   Logical Minimum (-32768)
      {0x26, 0xFF, 0x7F},  //   Logical Maximum (32767)
      {0x75, 0x10},        //   Report Size (16)
      {0x95, 0x01},        //   Report Count (1)
      {0x81, 0x02},        //   Input (Data, Variable, Absolute)
      {0x05, 0x09},        //   Usage Page (Button)
      {0x19, 0x01},        //   Usage Minimum (1)
      {0x29, 0x0A},        //   Usage Maximum (10)
      {0x15, 0x00},        //   Logical Minimum (0)
      {0x25, 0x01},        //   Logical Maximum (1)
      {0x75, 0x01},        //   Report Size (1)
      {0x95, 0x0A},        //   Report Count (10)
      {0x81, 0x02},        //   Input (Data, Variable, Absolute)
      {0x75, 0x06},        //   Report Size (6)
      {0x95, 0x01},        //   Report Count (1)
      {0x81, 0x03},        //   Input (Constant)
      {0x05, 0x01},        //   Usage Page (Generic Desktop)
      {0x09, 0x37},        //   Usage (Dial)
      {0x15, 0x81},        //   Logical Minimum (-127)
      {0x25, 0x7F},        //   Logical Maximum (127)
      {0x75, 0x08},        //   Report Size (8)
      {0x81, 0x06},        //   Input (Data, Variable, Relative)
      {0x85, 0x02},        //   Report ID (2)
      {0x06, 0x00, 0xFF},  //   Usage Page (Vendor)
      {0x15, 0x00},        //   Logical Minimum (0)
      {0x26, 0xFF, 0x00},  //   Logical Maximum (255)
      {0x09, 0x01},        //   Usage (1)
      {0x95, 0x07},        //   Report Count (7)
      {0x91, 0x02},        //   Output (Data, Variable, Absolute)
      {0x85, 0x03},        //   Report ID (3)
      {0x09, 0x02},        //   Usage (2)
      {0x95, 0x03},        //   Report Count (3)
      {0xB1, 0x02},        //   Feature (Data, Variable, Absolute)
      {0xC0},              // End Collection
  };
}

inline Bytes keyboard() { return joined(keyboardText()); }
inline Bytes joystick() { return joined(joystickText()); }

// Whether an item declares values: Input, Output or Feature.
inline bool declaresValues(const Bytes& item) {
  const unsigned prefix = item.front() & 0xFCU;
  return prefix == 0x80 || prefix == 0x90 || prefix == 0xB0;
}

}  // namespace quorvane
