#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "presets/decoding_error.h"
#include "presets/json_reader.h"
#include "presets/settings_share_file.h"
#include "presets/tuning_preset.h"

namespace quorvane {

// Encodes and decodes the JSON documents with presets.
//
// Decoding is strict: a missing key, a null or a wrong type throws DecodingError. An integer must
// be written as one (not as 1.0 or 1e3) and fit in 64 bits. No key has a default; unknown keys are
// ignored.

std::string encodePresets(const std::vector<TuningPreset>& presets);
std::string encodeShareFile(const SettingsShareFile& file);

TuningPreset decodePreset(const JSONValue& json);
std::vector<TuningPreset> decodePresets(const JSONValue& json);

// Accepts any text as the format. A null base counts as missing, which is allowed.
SettingsShareFile decodeShareFile(const JSONValue& json);

// The presets of a share file, a list or a single preset. Tries the forms in this order; the error,
// if any, is that of the last one.
std::vector<TuningPreset> decodeSettings(const JSONValue& json);

}  // namespace quorvane
