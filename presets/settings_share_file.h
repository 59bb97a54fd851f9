#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "presets/tuning_preset.h"
#include "support/wall_time.h"

namespace quorvane {

// A preset to share with other users, with the time of the export and the base it came from.
struct SettingsShareFile {
  static constexpr std::string_view currentFormat = "quorvane-settings-1";
  static constexpr std::string_view fileExtension = "quorvane";

  std::string format = std::string(currentFormat);
  WallSeconds exportedAt;
  std::optional<std::string> base;  // product name
  TuningPreset preset;

  bool operator==(const SettingsShareFile&) const = default;
};

}  // namespace quorvane
