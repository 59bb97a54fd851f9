#pragma once

#include <map>
#include <vector>

#include "hid/elements.h"
#include "hid/input_report.h"

namespace quorvane {

// Decodes input reports into the element values that changed since the previous report of the same
// ID. The first report of an ID gives all its values. Relative elements are given with every
// report. An array gives 1 for a usage that appears and 0 for one that disappears.
//
// Skips values wider than 64 bits or beyond the end of the report. Keeps one report per ID. Not
// thread-safe.
class HIDElementReader {
 public:
  explicit HIDElementReader(HIDElements elements) : elements_(std::move(elements)) {}

  std::vector<HIDElementValue> changes(const HIDInputReport& report);

 private:
  HIDElements elements_;
  std::map<std::uint8_t, Bytes> last_;  // payloads by report ID
};

}  // namespace quorvane
