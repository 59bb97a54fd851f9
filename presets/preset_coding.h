#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "presets/decoding_error.h"
#include "presets/json_reader.h"
#include "presets/settings_share_file.h"
#include "presets/tuning_preset.h"

namespace quorvane {

// The JSON documents that presets travel in.
//
// Decoding is strict: a missing key, a null or another type throws DecodingError, a number counts
// as an integer only when it is written as one and has 64 bits, and nothing has a default. Unknown
// keys are ignored.

std::string encodePresets(const std::vector<TuningPreset>& presets);
std::string encodeShareFile(const SettingsShareFile& file);

TuningPreset decodePreset(const JSONValue& json);
std::vector<TuningPreset> decodePresets(const JSONValue& json);

// Accepts any text as the format. A base that is null counts as absent.
SettingsShareFile decodeShareFile(const JSONValue& json);

// The presets of a share file, a list or a single preset: the first of these forms that it has.
std::vector<TuningPreset> decodeSettings(const JSONValue& json);

}  // namespace quorvane
