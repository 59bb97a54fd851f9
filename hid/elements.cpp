#include "hid/elements.h"

#include <limits>
#include <map>
#include <utility>

#include "hid/descriptor_item.h"

namespace quorvane {
namespace {

// Limit of nested push items, against malformed descriptors.
constexpr std::size_t deepestStack = 64;

constexpr std::uint64_t unreachable = std::numeric_limits<std::uint64_t>::max();

constexpr std::uint32_t buttonPage = 0x09;
constexpr std::uint32_t genericDesktopPage = 0x01;
constexpr std::uint32_t firstAxisUsage = 0x30;  // X
constexpr std::uint32_t lastAxisUsage = 0x38;   // Wheel

constexpr std::uint32_t constantFlag = 0x01;
constexpr std::uint32_t variableFlag = 0x02;
constexpr std::uint32_t relativeFlag = 0x04;

struct Globals {
  std::uint32_t usagePage = 0;
  std::int64_t logicalMin = 0;
  DescriptorItem logicalMax;  // signed only when the minimum is negative
  std::uint32_t reportSize = 0;
  std::uint32_t reportID = 0;
  std::uint32_t reportCount = 0;
};

struct LocalUsage {
  HIDUsageRange range;
  bool hasPage = false;
};

class Parser {
 public:
  HIDElements parse(ByteView descriptor) {
    DescriptorItems items(descriptor);
    while (const auto item = items.next()) {
      switch (item->type) {
        case DescriptorItem::Type::main:
          applyMain(*item);
          break;
        case DescriptorItem::Type::global:
          applyGlobal(*item);
          break;
        case DescriptorItem::Type::local:
          applyLocal(*item);
          break;
        case DescriptorItem::Type::reserved:
          break;
      }
    }
    return std::move(result_);
  }

 private:
  void applyGlobal(const DescriptorItem& item) {
    switch (item.tag) {
      case GlobalTag::usagePage:
        globals_.usagePage = item.value;
        break;
      case GlobalTag::logicalMinimum:
        globals_.logicalMin = item.signedValue();
        break;
      case GlobalTag::logicalMaximum:
        globals_.logicalMax = item;
        break;
      case GlobalTag::reportSize:
        globals_.reportSize = item.value;
        break;
      case GlobalTag::reportID:
        globals_.reportID = item.value;
        result_.usesReportIDs = true;
        break;
      case GlobalTag::reportCount:
        globals_.reportCount = item.value;
        break;
      case GlobalTag::push:
        if (stack_.size() < deepestStack) stack_.push_back(globals_);
        break;
      case GlobalTag::pop:
        if (!stack_.empty()) {
          globals_ = stack_.back();
          stack_.pop_back();
        }
        break;
      default:
        break;
    }
  }

  void applyLocal(const DescriptorItem& item) {
    // A four-byte usage includes its page; a shorter one uses the page in force at the main item.
    LocalUsage usage;
    usage.hasPage = item.size == 4;
    usage.range.page = usage.hasPage ? item.value >> 16U : 0;
    usage.range.first = usage.hasPage ? item.value & 0xFFFFU : item.value;
    usage.range.last = usage.range.first;
    switch (item.tag) {
      case LocalTag::usage:
        usages_.push_back(usage);
        break;
      case LocalTag::usageMinimum:
        usageMinimum_ = usage;
        break;
      case LocalTag::usageMaximum:
        if (usageMinimum_ && usageMinimum_->range.first <= usage.range.first) {
          usageMinimum_->range.last = usage.range.first;
          usages_.push_back(*usageMinimum_);
        }
        usageMinimum_.reset();
        break;
      default:
        break;
    }
  }

  std::vector<HIDUsageRange> usagesInForce() const {
    std::vector<HIDUsageRange> ranges;
    ranges.reserve(usages_.size());
    for (const LocalUsage& usage : usages_) {
      ranges.push_back(usage.range);
      if (!usage.hasPage) ranges.back().page = globals_.usagePage;
    }
    return ranges;
  }

  void applyMain(const DescriptorItem& item) {
    if (item.tag == MainTag::collection) {
      if (!collectionSeen_ && !usages_.empty()) result_.primaryUsage = usagesInForce().front();
      collectionSeen_ = true;
    } else if (const auto kind = kindOfMainTag(item.tag)) {
      addElement(*kind, item.value);
    }
    usages_.clear();
    usageMinimum_.reset();
  }

  void addElement(HIDReportSummary::Kind kind, std::uint32_t flags) {
    HIDElement element;
    element.usagePage = globals_.usagePage;
    element.reportID = globals_.reportID;
    element.reportSize = globals_.reportSize;
    element.reportCount = globals_.reportCount;
    element.logicalMin = globals_.logicalMin;
    element.logicalMax = globals_.logicalMin < 0 ? globals_.logicalMax.signedValue()
                                                 : std::int64_t{globals_.logicalMax.value};
    element.isConstant = (flags & constantFlag) != 0;
    element.isArray = (flags & variableFlag) == 0;
    element.isRelative = (flags & relativeFlag) != 0;
    element.usages = usagesInForce();
    element.type = typeOf(kind, element);

    std::uint64_t& bits = bits_[{kind, globals_.reportID}];
    element.bitOffset = bits;
    // A saturated total stays saturated, so that later elements lie outside every report.
    bits = element.endBit();
    result_.elements.push_back(std::move(element));
  }

  static HIDElementType typeOf(HIDReportSummary::Kind kind, const HIDElement& element) {
    if (kind == HIDReportSummary::Kind::output) return HIDElementType::output;
    if (kind == HIDReportSummary::Kind::feature) return HIDElementType::feature;
    if (element.isArray && !element.isConstant) return HIDElementType::inputScanCodes;
    if (element.usages.empty()) return HIDElementType::inputMisc;
    const HIDUsageRange& usage = element.usages.front();
    if (usage.page == buttonPage) return HIDElementType::inputButton;
    const bool axis = usage.page == genericDesktopPage && usage.first >= firstAxisUsage &&
                      usage.first <= lastAxisUsage;
    return axis ? HIDElementType::inputAxis : HIDElementType::inputMisc;
  }

  HIDElements result_;
  Globals globals_;
  std::vector<Globals> stack_;
  std::vector<LocalUsage> usages_;
  std::optional<LocalUsage> usageMinimum_;
  bool collectionSeen_ = false;
  std::map<std::pair<HIDReportSummary::Kind, std::uint32_t>, std::uint64_t> bits_;
};

}  // namespace

std::optional<HIDReportSummary::Kind> reportKind(HIDElementType type) {
  switch (type) {
    case HIDElementType::inputMisc:
    case HIDElementType::inputButton:
    case HIDElementType::inputAxis:
    case HIDElementType::inputScanCodes:
      return HIDReportSummary::Kind::input;
    case HIDElementType::output:
      return HIDReportSummary::Kind::output;
    case HIDElementType::feature:
      return HIDReportSummary::Kind::feature;
    case HIDElementType::collection:
      return std::nullopt;
  }
  return std::nullopt;
}

std::uint64_t HIDElement::endBit() const {
  const std::uint64_t length = std::uint64_t{reportSize} * reportCount;
  return length > unreachable - bitOffset ? unreachable : bitOffset + length;
}

std::optional<HIDUsageRange> HIDElement::usageAt(std::uint64_t index) const {
  for (const HIDUsageRange& range : usages) {
    const std::uint64_t length = std::uint64_t{range.last} - range.first + 1;
    if (index < length) {
      const auto usage = static_cast<std::uint32_t>(range.first + index);
      return HIDUsageRange{range.page, usage, usage};
    }
    index -= length;
  }
  if (isArray || usages.empty()) return std::nullopt;
  const HIDUsageRange& last = usages.back();
  return HIDUsageRange{last.page, last.last, last.last};
}

HIDElements HIDElements::parse(ByteView descriptor) { return Parser().parse(descriptor); }

}  // namespace quorvane
