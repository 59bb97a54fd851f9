#include <algorithm>
#include <array>
#include <limits>
#include <map>
#include <utility>
#include <vector>

#include "fuzz/properties.h"
#include "hid/descriptor_item.h"
#include "hid/elements.h"
#include "hid/port.h"
#include "hid/report_descriptor.h"
#include "support/invariant.h"

namespace quorvane::Fuzz {
namespace {

using Summaries = std::vector<HIDReportSummary>;

constexpr std::uint8_t longItem = 0xFE;
constexpr std::size_t deepestStack = 64;

// A short item of the descriptor, truncated at the descriptor's end.
struct WrittenItem {
  ByteView bytes;
  std::size_t announced = 0;  // data bytes according to its prefix

  unsigned type() const { return (bytes[0] >> 2U) & 3U; }
  unsigned tag() const { return bytes[0] >> 4U; }
  bool isGlobal(std::uint8_t wanted) const { return type() == 1 && tag() == wanted; }

  std::uint32_t value() const {
    std::uint32_t value = 0;
    for (std::size_t i = bytes.size() - 1; i > 0; --i) value = (value << 8U) | bytes[i];
    return value;
  }
};

std::vector<WrittenItem> itemsOf(ByteView rest) {
  std::vector<WrittenItem> items;
  while (!rest.empty()) {
    const bool isLong = rest[0] == longItem;
    if (isLong && rest.size() < 2) break;
    const std::size_t size = rest[0] & 3U;
    const std::size_t announced = isLong ? std::size_t{rest[1]} + 2 : size + (size == 3 ? 1 : 0);
    const std::size_t length = std::min(announced + 1, rest.size());
    if (!isLong) items.push_back({rest.first(length), announced});
    rest = rest.subspan(length);
  }
  return items;
}

void expectSameItems(ByteView descriptor) {
  DescriptorItems walk(descriptor);
  for (const WrittenItem& written : itemsOf(descriptor)) {
    const auto item = walk.next();
    invariant(item.has_value(), "the walk ends where the descriptor does");
    invariant(static_cast<unsigned>(item->type) == written.type() && item->tag == written.tag() &&
                  item->size == written.announced && item->value == written.value(),
              "the walk reads every item as it is written");
  }
  invariant(!walk.next(), "the walk reads no more items than there are");
}

void append(Bytes& bytes, ByteView more) { bytes.insert(bytes.end(), more.begin(), more.end()); }

Bytes withoutStack(ByteView descriptor) {
  Bytes result;
  for (const WrittenItem& item : itemsOf(descriptor)) {
    if (item.isGlobal(GlobalTag::push) || item.isGlobal(GlobalTag::pop)) continue;
    append(result, item.bytes);
  }
  return result;
}

// The global items that the summaries use, by tag.
using SummaryState = std::map<std::uint8_t, std::uint32_t>;

void appendState(Bytes& bytes, const SummaryState& state) {
  for (const auto& [tag, value] : state) {
    bytes.push_back(static_cast<std::uint8_t>(unsigned{tag} << 4U | 1U << 2U | 3U));
    for (unsigned shift = 0; shift < 32; shift += 8) {
      bytes.push_back(static_cast<std::uint8_t>(value >> shift));
    }
  }
}

// The descriptor without Push, and with each Pop replaced by the items that it restores.
Bytes stackWrittenOut(ByteView descriptor) {
  SummaryState state{{GlobalTag::usagePage, 0},
                     {GlobalTag::reportSize, 0},
                     {GlobalTag::reportID, 0},
                     {GlobalTag::reportCount, 0}};
  std::vector<SummaryState> stack;
  Bytes result;
  for (const WrittenItem& item : itemsOf(descriptor)) {
    if (item.isGlobal(GlobalTag::push)) {
      if (stack.size() < deepestStack) stack.push_back(state);
    } else if (item.isGlobal(GlobalTag::pop)) {
      if (stack.empty()) continue;
      state = stack.back();
      stack.pop_back();
      appendState(result, state);
    } else {
      const auto tag = static_cast<std::uint8_t>(item.tag());
      if (item.type() == 1 && state.contains(tag)) state[tag] = item.value();
      append(result, item.bytes);
    }
  }
  return result;
}

// Whether the bit counts of all reports fit, so that the summaries do not end early.
bool canBeSummedUp(const std::vector<HIDElement>& elements) {
  constexpr auto most = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()) - 7;
  std::map<std::pair<HIDReportSummary::Kind, std::uint32_t>, std::uint64_t> bits;
  for (const HIDElement& element : elements) {
    const auto kind = reportKind(element.type);
    invariant(kind.has_value(), "every element belongs to a report");
    std::uint64_t& sum = bits[{*kind, element.reportID}];
    const std::uint64_t more = std::uint64_t{element.reportSize} * element.reportCount;
    if (more > most - sum) return false;
    sum += more;
  }
  return true;
}

Summaries summedUp(const std::vector<HIDElement>& elements) {
  HIDReportTally tally;
  for (const HIDElement& element : elements) {
    tally.add(*reportKind(element.type), element.reportID, element.reportSize, element.reportCount,
              element.usagePage);
  }
  return tally.takeSummaries();
}

void expectAgreement(ByteView forSummaries, ByteView forElements, std::string_view what) {
  const auto elements = HIDElements::parse(forElements).elements;
  if (!canBeSummedUp(elements)) return;
  const HIDReportDescriptor descriptor(Bytes(forSummaries.begin(), forSummaries.end()));
  invariant(descriptor.summaries() == summedUp(elements), what);
}

void expectOrder(const Summaries& summaries) {
  const auto before = [](const HIDReportSummary& a, const HIDReportSummary& b) {
    return std::pair(rawValue(a.kind), a.reportID) < std::pair(rawValue(b.kind), b.reportID);
  };
  for (std::size_t i = 0; i < summaries.size(); ++i) {
    const HIDReportSummary& report = summaries[i];
    invariant(i == 0 || before(summaries[i - 1], report), "summaries are in order, each only once");
    invariant(report.elementCount > 0 && report.byteLength >= 0, "a summary has something to tell");
    invariant(std::is_sorted(report.usagePages.begin(), report.usagePages.end()) &&
                  !report.usagePages.empty(),
              "usage pages are in order");
  }
}

std::int64_t numberOf(const HIDProperties& properties, std::string_view key) {
  const auto found = properties.find(key);
  return found == properties.end() ? 0 : std::get<std::int64_t>(found->second);
}

// `summaries` must be those of stackWrittenOut(descriptor).
void expectProperties(ByteView descriptor, const Summaries& summaries) {
  HIDProperties properties;
  addDescriptorProperties(properties, Bytes(descriptor.begin(), descriptor.end()));
  invariant(properties.empty() == descriptor.empty(), "a descriptor has properties");
  const std::array<std::pair<HIDReportSummary::Kind, std::string_view>, 3> sizes{
      {{HIDReportSummary::Kind::input, HIDPropertyKey::maxInputReportSize},
       {HIDReportSummary::Kind::output, HIDPropertyKey::maxOutputReportSize},
       {HIDReportSummary::Kind::feature, HIDPropertyKey::maxFeatureReportSize}}};
  for (const auto& [kind, key] : sizes) {
    std::int64_t largest = 0;
    for (const HIDReportSummary& report : summaries) {
      if (report.kind == kind) largest = std::max(largest, report.byteLength);
    }
    const bool usesIDs = HIDElements::parse(descriptor).usesReportIDs;
    invariant(numberOf(properties, key) == largest + (usesIDs && largest > 0 ? 1 : 0),
              "the largest report has room for its bytes and its ID");
  }
}

}  // namespace

void descriptor(ByteView bytes) {
  expectSameItems(bytes);
  const Bytes flat = withoutStack(bytes);
  expectAgreement(bytes, flat, "summaries and elements agree where there is no stack");
  expectAgreement(stackWrittenOut(bytes), bytes, "summaries and elements agree on the stack");
  if (!canBeSummedUp(HIDElements::parse(flat).elements)) return;
  expectOrder(HIDReportDescriptor(Bytes(bytes.begin(), bytes.end())).summaries());
  const Bytes writtenOut = stackWrittenOut(bytes);
  if (!canBeSummedUp(HIDElements::parse(writtenOut).elements)) return;
  expectProperties(bytes, HIDReportDescriptor(writtenOut).summaries());
}

}  // namespace quorvane::Fuzz
