#include <fmt/format.h>

#include "cli/base_access.h"
#include "cli/commands.h"
#include "cli/json_output.h"
#include "cli/recording.h"
#include "hid/usb_reset.h"
#include "protocol/error.h"
#include "protocol/menu_text.h"
#include "support/printing.h"
#include "support/text.h"

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

std::int64_t parseDegrees(const std::string& word) {
  const auto degrees = MenuText::parseNumber(TuningParameter::sensitivity, word);
  if (degrees) return *degrees;
  throw UsageError(
      fmt::format("\"{}\" is no steering angle: give whole degrees, such as 540", oneLine(word)));
}

// Rewords the session's errors: they name the menu's setting, which this command does not change.
void setRotation(WheelBase& base, std::int64_t degrees) {
  try {
    base.setRotation(degrees);
  } catch (const FanatecError& error) {
    if (std::holds_alternative<FanatecError::NotAvailable>(error.value())) {
      throw CommandError(error.kind(), base.info().displayName() + " has no steering angle");
    }
    const auto* const range = std::get_if<FanatecError::OutOfRange>(&error.value());
    if (range == nullptr) throw;
    throw CommandError(error.kind(), fmt::format("Steering angle {}: {} to {} degrees", degrees,
                                                 range->allowed.lower, range->allowed.upper));
  }
}

}  // namespace

ExitStatus rotationCommand(const CommandContext& context, const std::string& word) {
  const std::int64_t degrees = parseDegrees(word);
  const OpenBase base(context);
  recorded(context, *base, {HistoryAction::rotation, {}, std::to_string(degrees)},
           [&] { setRotation(*base, degrees); });
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
  recorded(context, *base, {HistoryAction::raw, {}, packet.hexDump()},
           [&] { base->sendRaw(packet); });
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

}  // namespace quorvane
