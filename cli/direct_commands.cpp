#include "cli/base_access.h"
#include "cli/commands.h"
#include "cli/json_output.h"
#include "cli/udev_rule.h"
#include "hid/usb_reset.h"
#include "support/printing.h"

namespace quorvane {
namespace {

HIDReportPacket parsePacket(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) text += word + " ";
  const auto bytes = parseHexBytes(text);
  if (!bytes) {
    throw UsageError("The packet must be hexadecimal bytes, report ID first, such as: ff 03 02");
  }
  return {bytes->front(), Bytes(bytes->begin() + 1, bytes->end())};
}

}  // namespace

ExitStatus rotationCommand(const CommandContext& context, std::int64_t degrees) {
  const OpenBase base(context);
  base->setRotation(degrees);
  if (context.options.json) {
    printJson(context.world, {{"device", deviceJson(base->info())}, {"rotation", degrees}});
  } else {
    printTo(context.world.out, "Steering angle set to {} deg\n", degrees);
  }
  return ExitStatus::done;
}

ExitStatus rawCommand(const CommandContext& context, const std::vector<std::string>& words) {
  const HIDReportPacket packet = parsePacket(words);
  const OpenBase base(context);
  base->sendRaw(packet);
  if (context.options.json) {
    printJson(context.world, {{"device", deviceJson(base->info())}, {"sent", packet.hexDump()}});
  } else {
    printTo(context.world.out, "Sent {} bytes: {}\n", packet.wireBytes().size(), packet.hexDump());
  }
  return ExitStatus::done;
}

ExitStatus usbResetCommand(const CommandContext& context) {
  std::optional<std::int64_t> productID;
  if (!context.options.device.empty()) productID = chosenBase(context).productID;
  const std::int64_t location = USBReset::reset(Fanatec::vendorID, productID, context.world.usb);
  if (context.options.json) {
    printJson(context.world, {{"locationID", location}});
  } else {
    printTo(context.world.out, "USB reset issued; the base will reconnect in a few seconds\n");
  }
  return ExitStatus::done;
}

ExitStatus udevRuleCommand(const CommandContext& context) {
  printTo(context.world.out, "{}", udevRuleText());
  return ExitStatus::done;
}

}  // namespace quorvane
