#include "presets/tuning_preset.h"

#include <algorithm>
#include <utility>

namespace quorvane {

TuningPreset::Values TuningPreset::codeValues(const std::vector<ParameterValue>& values) {
  Values result;
  for (const auto& [parameter, value] : values) result.emplace(parameter.code(), value);
  return result;
}

std::optional<std::int64_t> TuningPreset::value(TuningParameter parameter) const {
  const auto found = values.find(parameter.code());
  if (found == values.end()) return std::nullopt;
  return found->second;
}

std::vector<TuningParameter> TuningPreset::parameters() const {
  std::vector<TuningParameter> result;
  for (const TuningParameter parameter : TuningParameter::allCases()) {
    if (value(parameter)) result.push_back(parameter);
  }
  return result;
}

std::vector<ParameterValue> TuningPreset::applicable(
    const std::optional<FanatecProduct>& product) const {
  std::vector<ParameterValue> result;
  for (const TuningParameter parameter : TuningParameter::adjustable(product)) {
    if (const auto kept = value(parameter)) result.push_back({parameter, *kept});
  }
  return result;
}

TuningPreset TuningPreset::capture(const std::optional<FanatecProduct>& product, std::string name,
                                   const TuningSnapshot& snapshot) {
  TuningPreset preset;
  preset.name = std::move(name);
  for (const TuningParameter parameter : TuningParameter::adjustable(product)) {
    preset.values.emplace(parameter.code(), snapshot.value(parameter, product));
  }
  return preset;
}

}  // namespace quorvane
