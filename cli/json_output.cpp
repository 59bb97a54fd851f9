#include "cli/json_output.h"

#include <fmt/format.h>
#include <unistd.h>

#include <cstdio>
#include <string>

#include "presets/preset_coding.h"
#include "protocol/error.h"
#include "support/file.h"
#include "support/printing.h"
#include "support/text.h"
#include "support/utf8.h"
#include "support/wall_time.h"

namespace quorvane {
namespace {

constexpr int indentation = 2;

// Control characters are only in strings, and below U+10000. The library escapes those of ASCII
// except DEL; this escapes the others.
std::string withEscapedControls(std::string_view document) {
  std::string result;
  result.reserve(document.size());
  while (!document.empty()) {
    const Utf8Character next = firstCharacter(document);
    if (next.code && *next.code != U'\n' && isControl(*next.code)) {
      result += fmt::format("\\u{:04x}", static_cast<std::uint32_t>(*next.code));
    } else {
      result += document.substr(0, next.length);
    }
    document.remove_prefix(next.length);
  }
  return result;
}

std::string text(const Json& document, int indent) {
  return withEscapedControls(document.dump(indent, ' ', false, Json::error_handler_t::replace));
}

std::string_view kindOf(const std::exception& failure) {
  if (const auto* const error = dynamic_cast<const FanatecError*>(&failure)) return error->kind();
  if (const auto* const error = dynamic_cast<const CommandError*>(&failure)) return error->kind();
  if (dynamic_cast<const FileError*>(&failure) != nullptr) return "fileFailed";
  if (dynamic_cast<const DecodingError*>(&failure) != nullptr) return "invalidFile";
  return "ioFailed";
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
  for (const TuningParameter parameter : TuningParameter::adjustable(product)) {
    values[std::string(parameter.code())] = snapshot.value(parameter, product);
  }
  return {{"set", snapshot.slot()},
          {"mode", snapshot.modeName()},
          {"receivedAt", iso8601(snapshot.receivedAt())},
          {"raw", snapshot.hexDump()},
          {"values", std::move(values)}};
}

Json presetsJson(const std::vector<TuningPreset>& presets) {
  return {{"presets", Json::parse(encodePresets(presets))}};
}

Json errorJson(std::string_view kind, std::string_view message) {
  return {{"error", {{"kind", kind}, {"message", message}}}};
}

Json errorJson(const std::exception& failure) { return errorJson(kindOf(failure), failure.what()); }

void printJson(const World& world, const Json& document) {
  writeTo(world.out, text(document, indentation) + '\n');
}

void printJsonFile(const World& world, std::string_view content) {
  const bool isTerminal = ::isatty(::fileno(world.out)) != 0;
  writeTo(world.out, isTerminal ? withEscapedControls(content) : std::string(content));
  writeTo(world.out, "\n");
}

void printJsonLine(const World& world, const Json& document) {
  writeTo(world.out, text(document, -1) + '\n');
  flush(world.out);
}

}  // namespace quorvane
