#include "hid/element_reader.h"

#include <algorithm>
#include <optional>
#include <set>
#include <utility>

namespace quorvane {
namespace {

constexpr std::uint32_t widestValue = 64;

// The `size` bits at `offset`, least significant first; the caller has checked the bounds.
std::uint64_t bitsAt(ByteView payload, std::uint64_t offset, std::uint32_t size) {
  std::uint64_t value = 0;
  for (std::uint32_t i = 0; i < size; ++i) {
    const std::uint64_t bit = offset + i;
    const auto set = static_cast<std::uint64_t>((payload[bit / 8] >> (bit % 8)) & 1U);
    value |= set << i;
  }
  return value;
}

std::int64_t signExtended(std::uint64_t value, std::uint32_t size) {
  if (size < widestValue && ((value >> (size - 1)) & 1U) != 0) value |= ~std::uint64_t{0} << size;
  return static_cast<std::int64_t>(value);
}

bool hasValues(const HIDElement& element) {
  return reportKind(element.type) == HIDReportSummary::Kind::input && !element.isConstant &&
         element.reportSize >= 1 && element.reportSize <= widestValue;
}

// The number of the element's values within the payload.
std::uint64_t valuesWithin(const HIDElement& element, ByteView payload) {
  const std::uint64_t bits = payload.size() * 8;
  if (element.bitOffset >= bits) return 0;
  return std::min<std::uint64_t>(element.reportCount,
                                 (bits - element.bitOffset) / element.reportSize);
}

std::int64_t valueAt(const HIDElement& element, ByteView payload, std::uint64_t index) {
  const std::uint64_t raw =
      bitsAt(payload, element.bitOffset + index * element.reportSize, element.reportSize);
  if (element.logicalMin < 0) return signExtended(raw, element.reportSize);
  return static_cast<std::int64_t>(raw);
}

// The usages that an array reports as active.
std::set<std::pair<std::uint32_t, std::uint32_t>> activeUsages(const HIDElement& element,
                                                               ByteView payload) {
  std::set<std::pair<std::uint32_t, std::uint32_t>> active;
  const std::uint64_t count = valuesWithin(element, payload);
  for (std::uint64_t i = 0; i < count; ++i) {
    const std::int64_t value = valueAt(element, payload, i);
    if (value < element.logicalMin || value > element.logicalMax) continue;
    const auto index =
        static_cast<std::uint64_t>(value) - static_cast<std::uint64_t>(element.logicalMin);
    const auto usage = element.usageAt(index);
    // Usage 0 of every page means "no event".
    if (usage && usage->first != 0) active.insert({usage->page, usage->first});
  }
  return active;
}

class Collector {
 public:
  Collector(const HIDInputReport& report, ByteView payload, const Bytes* before)
      : report_(report), payload_(payload), before_(before) {}

  void add(const HIDElement& element) {
    if (element.isArray) {
      addArray(element);
    } else {
      addVariable(element);
    }
  }

  std::vector<HIDElementValue> take() { return std::move(values_); }

 private:
  void addVariable(const HIDElement& element) {
    const std::uint64_t count = valuesWithin(element, payload_);
    const std::uint64_t known = before_ == nullptr ? 0 : valuesWithin(element, *before_);
    for (std::uint64_t i = 0; i < count; ++i) {
      const std::int64_t value = valueAt(element, payload_, i);
      const bool same = i < known && valueAt(element, *before_, i) == value;
      if (same && !element.isRelative) continue;
      const auto usage = element.usageAt(i);
      emit(element, usage ? usage->page : element.usagePage, usage ? usage->first : 0, value);
    }
  }

  void addArray(const HIDElement& element) {
    const auto now = activeUsages(element, payload_);
    const auto then = before_ == nullptr ? decltype(now){} : activeUsages(element, *before_);
    for (const auto& usage : then) {
      if (!now.contains(usage)) emit(element, usage.first, usage.second, 0);
    }
    for (const auto& usage : now) {
      if (!then.contains(usage)) emit(element, usage.first, usage.second, 1);
    }
  }

  void emit(const HIDElement& element, std::uint32_t page, std::uint32_t usage,
            std::int64_t value) {
    values_.push_back({page, usage, element.reportID, value, element.logicalMin, element.logicalMax,
                       report_.receivedAt});
  }

  const HIDInputReport& report_;
  ByteView payload_;
  const Bytes* before_;
  std::vector<HIDElementValue> values_;
};

}  // namespace

std::vector<HIDElementValue> HIDElementReader::changes(const HIDInputReport& report) {
  ByteView payload(report.bytes);
  if (report.reportID != 0 && !payload.empty()) payload = payload.subspan(1);

  const auto before = last_.find(report.reportID);
  Collector collector(report, payload, before == last_.end() ? nullptr : &before->second);
  for (const HIDElement& element : elements_.elements) {
    if (element.reportID == report.reportID && hasValues(element)) collector.add(element);
  }
  last_[report.reportID] = Bytes(payload.begin(), payload.end());
  return collector.take();
}

}  // namespace quorvane
