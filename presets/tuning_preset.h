#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "presets/uuid.h"
#include "protocol/tuning_parameter.h"
#include "protocol/tuning_snapshot.h"

namespace quorvane {

// A value of one parameter in display units, the numbers that TuningParameter::encode accepts.
struct ParameterValue {
  TuningParameter parameter = TuningParameter::slot;
  std::int64_t value = 0;

  bool operator==(const ParameterValue&) const = default;
};

// A named set of menu values. A value record; to change one is to replace it.
struct TuningPreset {
  // Keyed by the parameter's code exactly as it is ("brF"). Keys that are no code are kept and
  // otherwise ignored; a parameter without a key is left as it is on the base.
  using Values = std::map<std::string, std::int64_t, std::less<>>;

  UUID id = UUID::random();
  std::string name;
  std::string game;    // "Any" for a general preset; empty for a captured one
  std::string source;  // who published the values; empty for a captured one
  std::string notes;   // mostly the settings in the game that belong to the values
  Values values;
  bool isBuiltIn = false;

  // The stored form of values by parameter.
  static Values codeValues(const std::vector<ParameterValue>& values);

  std::optional<std::int64_t> value(TuningParameter parameter) const;

  // The parameters that the preset has a value for, in menu order.
  std::vector<TuningParameter> parameters() const;

  // What is written when the preset is applied to a base: its values in menu order, without the
  // set's number and without what the product's menu lacks (which is nothing for no product).
  std::vector<ParameterValue> applicable(const std::optional<FanatecProduct>& product) const;

  // A user's preset of everything in the menu but the set's number.
  static TuningPreset capture(const std::optional<FanatecProduct>& product, std::string name,
                              const TuningSnapshot& snapshot);

  // The catalogue: the same four, with the same ids, for the rest of the run. Any thread may call.
  static const std::vector<TuningPreset>& builtIn();

  bool operator==(const TuningPreset&) const = default;
};

}  // namespace quorvane
