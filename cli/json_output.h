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

// Objects keep their keys in insertion order.
using Json = nlohmann::ordered_json;

Json deviceJson(const HIDDeviceInfo& device);
Json identityJson(const std::optional<IdentityReport>& identity);

// "values" holds the parameters that the product has, without the set number.
Json tuningJson(const TuningSnapshot& snapshot, const std::optional<FanatecProduct>& product);

// {"presets": [each as in the preset file]}
Json presetsJson(const std::vector<TuningPreset>& presets);

// {"error": {"kind", "message"}}. The kind is the name of a FanatecError's case; that of a
// CommandError; "fileFailed" for a FileError, "invalidFile" for a DecodingError, else "ioFailed".
Json errorJson(std::string_view kind, std::string_view message);
Json errorJson(const std::exception& failure);

// Prints one indented document and a line feed. Invalid UTF-8 is replaced; control characters
// (isControl) are \u-escaped.
void printJson(const World& world, const Json& document);

// Prints the content of a JSON file, byte for byte, and a line feed. On a terminal, control
// characters are escaped.
void printJsonFile(const World& world, std::string_view content);

// Prints a document on one line and flushes.
void printJsonLine(const World& world, const Json& document);

}  // namespace quorvane
