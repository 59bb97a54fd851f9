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

// A value of one parameter in display units, as TuningParameter::encode() takes it.
struct ParameterValue {
  TuningParameter parameter = TuningParameter::slot;
  std::int64_t value = 0;

  bool operator==(const ParameterValue&) const = default;
};

// A named list of menu values. A value type: stored presets are replaced, not changed.
struct TuningPreset {
  // Keyed by TuningParameter::code(), case-sensitive ("brF"). Unknown keys are kept, but not used.
  // A parameter without a key is left unchanged on the base.
  using Values = std::map<std::string, std::int64_t, std::less<>>;

  UUID id = UUID::random();
  std::string name;
  std::string game;    // "Any" for a general preset; empty for a captured one
  std::string source;  // who published the values; empty for a captured one
  std::string notes;   // mostly the in-game settings that go with the values
  Values values;
  bool isBuiltIn = false;

  // Converts values by parameter to values by code.
  static Values codeValues(const std::vector<ParameterValue>& values);

  std::optional<std::int64_t> value(TuningParameter parameter) const;

  // The parameters that the preset has a value for, in menu order.
  std::vector<TuningParameter> parameters() const;

  // The values to write when the preset is applied to a base, in menu order. Leaves out the set's
  // number, and parameters that the product's menu does not have (without a product, none).
  std::vector<ParameterValue> applicable(const std::optional<FanatecProduct>& product) const;

  // Creates a user's preset of all values in the menu but the set's number.
  static TuningPreset capture(const std::optional<FanatecProduct>& product, std::string name,
                              const TuningSnapshot& snapshot);

  // The four built-in presets. Their ids are random, and constant while the program runs.
  // Thread-safe.
  static const std::vector<TuningPreset>& builtIn();

  bool operator==(const TuningPreset&) const = default;
};

}  // namespace quorvane
