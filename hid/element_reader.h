#pragma once

#include <map>
#include <vector>

#include "hid/elements.h"
#include "hid/input_report.h"

namespace quorvane {

// Turns input reports into the element values that changed since the report before it with the same
// ID. The first report of an ID delivers all its values; relative elements are delivered with every
// report. An array delivers 1 for a usage that appears and 0 for one that is gone.
//
// Values wider than 64 bits or reaching beyond the report's end are left out. Remembers one report
// per ID. Not thread-safe.
class HIDElementReader {
 public:
  explicit HIDElementReader(HIDElements elements) : elements_(std::move(elements)) {}

  std::vector<HIDElementValue> changes(const HIDInputReport& report);

 private:
  HIDElements elements_;
  std::map<std::uint8_t, Bytes> last_;  // payloads by report ID
};

}  // namespace quorvane
