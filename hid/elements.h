#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "hid/report_summary.h"
#include "support/bytes.h"

namespace quorvane {

// The type of an element.
enum class HIDElementType : std::uint32_t {
  inputMisc = 1,
  inputButton = 2,
  inputAxis = 3,
  inputScanCodes = 4,
  output = 129,
  feature = 257,
  collection = 513,
};

// The report kind that an element belongs to; none for collections and unknown types.
std::optional<HIDReportSummary::Kind> reportKind(HIDElementType type);

struct HIDUsageRange {
  std::uint32_t page = 0;
  std::uint32_t first = 0;
  std::uint32_t last = 0;

  bool operator==(const HIDUsageRange&) const = default;
};

// One main item of a descriptor, with the global and local items that apply to it.
struct HIDElement {
  HIDElementType type = HIDElementType::inputMisc;
  std::uint32_t usagePage = 0;
  std::uint32_t reportID = 0;     // 0 when the descriptor declares none
  std::uint32_t reportSize = 0;   // bits of one value
  std::uint32_t reportCount = 0;  // number of values
  std::uint64_t bitOffset = 0;    // of the first value, without the report ID byte
  std::int64_t logicalMin = 0;
  std::int64_t logicalMax = 0;
  bool isConstant = false;  // padding
  bool isArray = false;     // values are indices into the usages
  bool isRelative = false;
  std::vector<HIDUsageRange> usages;  // in descriptor order

  // The bit after the last value; saturates at the largest 64-bit number.
  std::uint64_t endBit() const;

  // The usage of the index-th value (variables) or of the index-th entry (arrays). Variables with
  // fewer usages than values repeat the last one. None when there is no such entry.
  std::optional<HIDUsageRange> usageAt(std::uint64_t index) const;
};

// The result of a full parse of a report descriptor: globals with push and pop, local usages and
// ranges, arrays and variables, signed logical extents. parse() accepts any bytes, and returns what
// could be read. Memory use is bounded by the length of the descriptor. Collections are not listed.
struct HIDElements {
  std::vector<HIDElement> elements;           // in descriptor order
  std::optional<HIDUsageRange> primaryUsage;  // of the first top-level collection
  bool usesReportIDs = false;

  static HIDElements parse(ByteView descriptor);
};

}  // namespace quorvane
