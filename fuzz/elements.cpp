#include "hid/elements.h"

#include <algorithm>
#include <limits>
#include <map>
#include <utility>
#include <vector>

#include "fuzz/input.h"
#include "fuzz/properties.h"
#include "hid/element_reader.h"
#include "support/invariant.h"

namespace quorvane::Fuzz {
namespace {

using Values = std::vector<HIDElementValue>;

constexpr std::uint32_t widest = 64;

bool isRead(const HIDElement& element) {
  return reportKind(element.type) == HIDReportSummary::Kind::input && !element.isConstant &&
         element.reportSize >= 1 && element.reportSize <= widest;
}

HIDElementReader readerOf(const HIDElement& element) {
  HIDElements alone;
  alone.elements.push_back(element);
  return HIDElementReader(std::move(alone));
}

void expectPlaces(const std::vector<HIDElement>& elements) {
  constexpr std::uint64_t beyond = std::numeric_limits<std::uint64_t>::max();
  std::map<std::pair<HIDReportSummary::Kind, std::uint32_t>, std::uint64_t> ends;
  for (const HIDElement& element : elements) {
    const auto kind = reportKind(element.type);
    invariant(kind.has_value(), "every element belongs to a report");
    std::uint64_t& end = ends[{*kind, element.reportID}];
    invariant(element.bitOffset == end, "elements follow each other without a gap");
    const std::uint64_t bits = std::uint64_t{element.reportSize} * element.reportCount;
    end = bits > beyond - end ? beyond : end + bits;
  }
}

bool bitAt(ByteView payload, std::uint64_t bit) {
  return ((payload[bit / 8] >> (bit % 8)) & 1U) != 0;
}

void expectBits(const HIDElement& element, ByteView payload, std::uint64_t first,
                std::int64_t value) {
  for (std::uint32_t i = 0; i < element.reportSize; ++i) {
    invariant(bitAt(payload, first + i) == (((value >> i) & 1) != 0),
              "a value has the bits of its place in the report");
  }
  if (element.reportSize == widest) return;
  const std::int64_t sign = value >> (element.reportSize - (element.logicalMin < 0 ? 1 : 0));
  invariant(sign == 0 || (element.logicalMin < 0 && sign == -1), "a value has no bits beyond it");
}

// `values` are all values of a variable, from the first report of its ID.
void expectVariable(const HIDElement& element, ByteView payload, const Values& values) {
  std::uint64_t place = element.bitOffset;
  for (const HIDElementValue& value : values) {
    invariant(place + element.reportSize <= payload.size() * 8, "a value lies within its report");
    expectBits(element, payload, place, value.value);
    place += element.reportSize;
  }
  const bool isWhole = values.size() == element.reportCount;
  invariant(
      isWhole || place >= payload.size() * 8 || element.reportSize > payload.size() * 8 - place,
      "the first report tells all values");
}

bool lists(const HIDElement& element, const HIDElementValue& value) {
  return std::any_of(element.usages.begin(), element.usages.end(), [&](const HIDUsageRange& range) {
    return value.usagePage == range.page && value.usage >= range.first && value.usage <= range.last;
  });
}

void expectArray(const HIDElement& element, const Values& values) {
  for (const HIDElementValue& value : values) {
    invariant(value.value == 1 && value.usage != 0, "an array tells what became active");
    invariant(lists(element, value), "an array tells only usages of its own");
  }
  for (std::size_t i = 1; i < values.size(); ++i) {
    invariant(std::pair(values[i - 1].usagePage, values[i - 1].usage) <
                  std::pair(values[i].usagePage, values[i].usage),
              "an array tells each usage once");
  }
}

void expectGone(const HIDElement& element, HIDElementReader reader, HIDInputReport report,
                Values active) {
  report.bytes.resize(report.reportID == 0 ? 0 : 1);
  Values gone = reader.changes(report);
  for (HIDElementValue& value : active) value.value = 0;
  invariant(gone == (element.isArray ? active : Values{}), "what is no longer listed is gone");
}

void expectFirst(const HIDElement& element, const HIDInputReport& report) {
  HIDElementReader reader = readerOf(element);
  const Values values = reader.changes(report);
  const bool isRead = Fuzz::isRead(element) && element.reportID == report.reportID;
  if (!isRead) {
    invariant(values.empty(), "other elements have no values in a report");
    return;
  }
  const ByteView payload = ByteView(report.bytes).subspan(report.reportID == 0 ? 0 : 1);
  if (element.isArray) {
    expectArray(element, values);
  } else {
    expectVariable(element, payload, values);
  }
  const Values again = reader.changes(report);
  invariant(again == (element.isRelative && !element.isArray ? values : Values{}),
            "a repeated report has nothing new");
  expectGone(element, std::move(reader), report, values);
}

HIDInputReport nextReport(Input& input) {
  HIDInputReport report;
  report.reportID = input.byte();
  const std::uint8_t length = input.byte();
  if (report.reportID != 0) report.bytes.push_back(report.reportID);
  const ByteView payload = input.bytes(length);
  report.bytes.insert(report.bytes.end(), payload.begin(), payload.end());
  return report;
}

// Decodes the reports with all elements at once and with each element alone, to compare the two.
class SideBySide {
 public:
  explicit SideBySide(const HIDElements& elements) : whole_(elements) {
    alone_.reserve(elements.elements.size());
    for (const HIDElement& element : elements.elements) alone_.push_back(readerOf(element));
  }

  void read(const HIDInputReport& report) {
    Values values;
    for (HIDElementReader& reader : alone_) {
      const Values more = reader.changes(report);
      values.insert(values.end(), more.begin(), more.end());
    }
    invariant(whole_.changes(report) == values, "elements do not disturb each other");
  }

 private:
  HIDElementReader whole_;
  std::vector<HIDElementReader> alone_;
};

}  // namespace

void elements(ByteView bytes) {
  Input input(bytes);
  const std::uint8_t low = input.byte();
  const std::uint8_t high = input.byte();
  const HIDElements elements = HIDElements::parse(input.bytes(littleEndian16(low, high)));
  expectPlaces(elements.elements);
  SideBySide readers(elements);
  while (!input.atEnd()) {
    const HIDInputReport report = nextReport(input);
    for (const HIDElement& element : elements.elements) expectFirst(element, report);
    readers.read(report);
  }
}

}  // namespace quorvane::Fuzz
