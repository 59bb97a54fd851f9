#include "hid/report_descriptor.h"

#include "hid/descriptor_item.h"

namespace quorvane {
namespace {

struct SummaryGlobals {
  std::int64_t usagePage = 0;
  std::int64_t reportSize = 0;
  std::int64_t reportID = 0;
  std::int64_t reportCount = 0;

  void apply(const DescriptorItem& item) {
    switch (item.tag) {
      case GlobalTag::usagePage:
        usagePage = item.value;
        break;
      case GlobalTag::reportSize:
        reportSize = item.value;
        break;
      case GlobalTag::reportID:
        reportID = item.value;
        break;
      case GlobalTag::reportCount:
        reportCount = item.value;
        break;
      default:
        break;
    }
  }
};

}  // namespace

std::vector<HIDReportSummary> HIDReportDescriptor::summaries() const {
  SummaryGlobals globals;
  HIDReportTally tally;
  DescriptorItems items(bytes_);
  while (const auto item = items.next()) {
    if (item->type == DescriptorItem::Type::global) globals.apply(*item);
    if (item->type != DescriptorItem::Type::main) continue;
    if (const auto kind = kindOfMainTag(item->tag)) {
      tally.add(*kind, globals.reportID, globals.reportSize, globals.reportCount,
                globals.usagePage);
    }
  }
  return tally.takeSummaries();
}

}  // namespace quorvane
