#include <fmt/format.h>

#include "cli/base_access.h"
#include "cli/commands.h"
#include "cli/json_output.h"
#include "support/printing.h"
#include "support/text.h"

namespace quorvane {
namespace {

Json describeJson(const HIDDeviceInfo& base) {
  Json reports = Json::array();
  for (const HIDReportSummary& report : base.reports) {
    reports.push_back({{"kind", rawValue(report.kind)},
                       {"reportID", report.reportID},
                       {"byteLength", report.byteLength}});
  }
  Json document = deviceJson(base);
  document["accessible"] = base.device->accessible();
  const auto commandReportID = base.commandReportID();
  document["commandReportID"] = commandReportID ? Json(*commandReportID) : Json(nullptr);
  document["reports"] = std::move(reports);
  return document;
}

std::string reportsText(const HIDDeviceInfo& base) {
  std::string text;
  for (const HIDReportSummary& report : base.reports) {
    if (!text.empty()) text += ", ";
    text += fmt::format("{} 0x{:02x} ({} bytes)", rawValue(report.kind), report.reportID,
                        report.byteLength);
  }
  return text;
}

void print(const World& world, const HIDDeviceInfo& base) {
  const std::string node = base.device->node();
  printTo(world.out, "{}\n", oneLine(base.displayName()));
  printTo(world.out, "  id       {}\n", oneLine(base.id));
  printTo(world.out, "  product  0x{:04x}\n", base.productID);
  printTo(world.out, "  serial   {}\n",
          base.serialNumber.empty() ? "none" : oneLine(base.serialNumber));
  printTo(world.out, "  node     {}\n", node.empty() ? "none (simulated)" : oneLine(node));
  printTo(world.out, "  access   {}\n", base.device->accessible() ? "yes" : "no");
  printTo(world.out, "  reports  {}\n", reportsText(base));
}

}  // namespace

ExitStatus devicesCommand(const CommandContext& context) {
  const World& world = context.world;
  const std::vector<HIDDeviceInfo> bases = namedBases(context);

  bool locked = false;
  Json list = Json::array();
  for (const HIDDeviceInfo& base : bases) {
    if (context.options.json) {
      list.push_back(describeJson(base));
    } else {
      print(world, base);
    }
    locked = locked || !base.device->accessible();
  }
  if (context.options.json) printJson(world, {{"devices", std::move(list)}});
  if (bases.empty()) {
    printTo(world.err, "{}\n", noBaseHint);
  }
  if (locked) printTo(world.err, "{}\n", permissionHint);
  return ExitStatus::done;
}

}  // namespace quorvane
