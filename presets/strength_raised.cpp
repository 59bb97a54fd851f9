#include <array>

#include "presets/setting_value.h"
#include "presets/settings_comparison.h"

namespace quorvane {
namespace {

// The settings that make the wheel pull harder.
constexpr std::array strengths{TuningParameter::Case::forceFeedback,
                               TuningParameter::Case::forceEffect,
                               TuningParameter::Case::fullForce};
constexpr std::int64_t muchStronger = 25;

// The strength on a side, if the base can take it.
std::optional<std::int64_t> strengthIn(const TuningPreset::Values& values,
                                       TuningParameter parameter,
                                       const std::optional<FanatecProduct>& product) {
  const auto found = values.find(parameter.code());
  if (found == values.end() || !isInRange({parameter, found->second}, product)) return {};
  return found->second;
}

// Whether the product of FF and FOR grows by half or more.
bool growsByHalf(const TuningPreset::Values& now, const TuningPreset::Values& wanted,
                 const std::optional<FanatecProduct>& product) {
  std::int64_t before = 1;
  std::int64_t after = 1;
  for (const TuningParameter parameter :
       {TuningParameter::forceFeedback, TuningParameter::forceEffect}) {
    const auto present = strengthIn(now, parameter, product);
    if (!present) return false;
    before *= *present;
    after *= strengthIn(wanted, parameter, product).value_or(*present);
  }
  return 2 * after >= 3 * before && after > before;
}

}  // namespace

std::optional<TuningParameter> strengthRaised(const TuningPreset::Values& now,
                                              const TuningPreset::Values& wanted,
                                              const std::optional<FanatecProduct>& product) {
  std::optional<TuningParameter> most;
  std::int64_t mostBy = 0;
  for (const TuningParameter parameter : strengths) {
    const auto before = strengthIn(now, parameter, product);
    const auto after = strengthIn(wanted, parameter, product);
    if (!before || !after || *after - *before <= mostBy) continue;
    most = parameter;
    mostBy = *after - *before;
  }
  return mostBy >= muchStronger || growsByHalf(now, wanted, product) ? most : std::nullopt;
}

}  // namespace quorvane
