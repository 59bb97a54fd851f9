#pragma once

#include <exception>
#include <nlohmann/json.hpp>
#include <optional>
#include <string_view>
#include <vector>

#include "cli/context.h"
#include "hid/device_info.h"
#include "presets/tuning_preset.h"
#include "protocol/identity_report.h"
#include "protocol/tuning_snapshot.h"

namespace quorvane {

// Objects that keep their keys in the order written.
using Json = nlohmann::ordered_json;

Json deviceJson(const HIDDeviceInfo& device);
Json identityJson(const std::optional<IdentityReport>& identity);

// The values are those that the product has, without the set's number.
Json tuningJson(const TuningSnapshot& snapshot, const std::optional<FanatecProduct>& product);

// {"presets": [each as in the preset file]}
Json presetsJson(const std::vector<TuningPreset>& presets);

// {"error": {"kind", "message"}}. The kind is the name of a FanatecError's case; that of a
// CommandError; "fileFailed" for a FileError, "invalidFile" for a DecodingError, else "ioFailed".
Json errorJson(std::string_view kind, std::string_view message);
Json errorJson(const std::exception& failure);

// One document, indented, and a line feed. Texts of devices that are not UTF-8 are mended; controls
// (isControl) are \u-escaped.
void printJson(const World& world, const Json& document);

// The content of a JSON file, byte for byte, and a line feed. Controls are escaped on a terminal.
void printJsonFile(const World& world, std::string_view content);

// A document on one line, written out at once.
void printJsonLine(const World& world, const Json& document);

}  // namespace quorvane
