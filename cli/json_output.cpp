#include "cli/json_output.h"

#include <fmt/format.h>

#include <string>

#include "support/wall_time.h"

namespace quorvane {
namespace {

constexpr int indentation = 2;

std::string text(const Json& document, int indent) {
  return document.dump(indent, ' ', false, Json::error_handler_t::replace);
}

}  // namespace

Json deviceJson(const HIDDeviceInfo& device) {
  return {{"id", device.id},
          {"name", device.displayName()},
          {"productID", device.productID},
          {"serialNumber", device.serialNumber},
          {"node", device.device->node()}};
}

Json identityJson(const std::optional<IdentityReport>& identity) {
  if (!identity) return nullptr;
  return {{"base", identity->baseName()},
          {"wheel", identity->wheelName()},
          {"module", identity->moduleName()},
          {"raw", identity->hexDump()}};
}

Json tuningJson(const TuningSnapshot& snapshot, const std::optional<FanatecProduct>& product) {
  Json values = Json::object();
  for (const TuningParameter parameter : TuningParameter::available(product)) {
    if (parameter == TuningParameter::slot) continue;
    values[std::string(parameter.code())] = snapshot.value(parameter, product);
  }
  return {{"set", snapshot.slot()},
          {"mode", snapshot.modeName()},
          {"receivedAt", iso8601(snapshot.receivedAt())},
          {"raw", snapshot.hexDump()},
          {"values", std::move(values)}};
}

Json errorJson(std::string_view kind, std::string_view message) {
  return {{"error", {{"kind", kind}, {"message", message}}}};
}

void printJson(const World& world, const Json& document) {
  fmt::print(world.out, "{}\n", text(document, indentation));
}

void printJsonLine(const World& world, const Json& document) {
  fmt::print(world.out, "{}\n", text(document, -1));
  std::fflush(world.out);
}

}  // namespace quorvane
