#include <array>
#include <string_view>
#include <utility>

#include "presets/tuning_preset.h"

namespace quorvane {
namespace {

using P = TuningParameter;

constexpr std::size_t presetCount = 4;

struct Heading {
  std::string_view name;
  std::string_view game;
  std::string_view source;
  std::string_view notes;
};

constexpr std::array<Heading, presetCount> headings{{
    {"Fanatec factory defaults", "Any", "Fanatec help center, tuning menu article",
     "What a CSL DD or GT DD Pro ships with."},
    {"Fanatec recommended, Gran Turismo 7", "Gran Turismo 7", "Fanatec forum thread",
     "In-game: Max Torque 5, FFB Sensitivity 1."},
    {"Redline Lab 2025, Gran Turismo 7 (8 Nm)", "Gran Turismo 7", "redlinelab.example",
     "In-game: Max Torque 6 to 7 by car class, FFB Sensitivity 10. On a 5 Nm base raise Max Torque "
     "to 8 or 9."},
    {"Gearwerk 2025, Gran Turismo 7 (8 Nm)", "Gran Turismo 7", "gearwerk.example, March 2025",
     "Heavy damping. In-game: Max Torque 3 as a base and raised per car, FFB Sensitivity 2, "
     "steering sensitivity 5."},
}};

constexpr std::int64_t skip = -1;  // the preset leaves the parameter alone

// A column for each preset.
struct Row {
  TuningParameter parameter;
  std::array<std::int64_t, presetCount> values;
};

constexpr std::array rows{
    Row{P::sensitivity, {0, 0, 0, 0}},          Row{P::forceFeedback, {100, 100, 100, 100}},
    Row{P::vibration, {100, skip, skip, skip}}, Row{P::brakeLevelIndicator, {101, 101, skip, 75}},
    Row{P::forceFeedbackScaling, {1, 1, 1, 1}}, Row{P::forceEffect, {100, 100, 100, 100}},
    Row{P::springEffect, {100, 100, 0, 100}},   Row{P::damperEffect, {100, 100, 50, 100}},
    Row{P::naturalDamper, {50, 25, 15, 70}},    Row{P::naturalFriction, {0, 25, 10, 35}},
    Row{P::brakeForce, {50, skip, skip, 90}},   Row{P::forceEffectIntensity, {100, 100, 100, 100}},
    Row{P::interpolation, {11, 0, 3, 3}},       Row{P::naturalInertia, {0, 0, 5, 5}},
};

TuningPreset preset(std::size_t column) {
  const Heading& heading = headings[column];
  std::vector<ParameterValue> values;
  for (const Row& row : rows) {
    if (row.values[column] != skip) values.push_back({row.parameter, row.values[column]});
  }
  return {UUID::random(),
          std::string(heading.name),
          std::string(heading.game),
          std::string(heading.source),
          std::string(heading.notes),
          TuningPreset::codeValues(values),
          true};
}

std::vector<TuningPreset> catalogue() {
  std::vector<TuningPreset> presets;
  for (std::size_t column = 0; column < presetCount; ++column) presets.push_back(preset(column));
  return presets;
}

}  // namespace

const std::vector<TuningPreset>& TuningPreset::builtIn() {
  static const std::vector<TuningPreset> presets = catalogue();
  return presets;
}

}  // namespace quorvane
