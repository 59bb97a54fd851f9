#include "presets/setting_value.h"

#include <algorithm>
#include <vector>

#include "protocol/setting.h"

namespace quorvane {
namespace {

// The bases with this setting.
std::vector<const FanatecProduct*> basesWith(TuningParameter parameter) {
  std::vector<const FanatecProduct*> bases;
  for (const FanatecProduct& product : FanatecProduct::all()) {
    if (isOnMenu(parameter, product)) bases.push_back(&product);
  }
  return bases;
}

}  // namespace

bool isOnMenu(TuningParameter parameter, const std::optional<FanatecProduct>& product) {
  return !product || (settingOf(parameter).menus & menusOf(*product)) != 0;
}

std::optional<std::uint8_t> encodedValue(const ParameterValue& value,
                                         const std::optional<FanatecProduct>& product) {
  const TuningParameter parameter = value.parameter;
  if (!isOnMenu(parameter, product)) return std::nullopt;
  const bool isSpecial = parameter.hasSpecial(product) && parameter.isSpecial(value.value, product);
  if (!isSpecial && !parameter.allowedRange(product).contains(value.value)) return std::nullopt;
  return parameter.encode(value.value, product);
}

bool isInRange(const ParameterValue& value, const std::optional<FanatecProduct>& product) {
  if (product) return encodedValue(value, product).has_value();
  const auto bases = basesWith(value.parameter);
  return std::any_of(bases.begin(), bases.end(), [&](const FanatecProduct* base) {
    return encodedValue(value, *base).has_value();
  });
}

bool isSameValue(TuningParameter parameter, std::int64_t a, std::int64_t b,
                 const std::optional<FanatecProduct>& product) {
  if (product) {
    const auto byte = encodedValue({parameter, a}, product);
    return byte && byte == encodedValue({parameter, b}, product);
  }
  if (!isInRange({parameter, a}, {}) || !isInRange({parameter, b}, {})) return false;
  const auto bases = basesWith(parameter);
  return std::all_of(bases.begin(), bases.end(), [&](const FanatecProduct* base) {
    return encodedValue({parameter, a}, *base) == encodedValue({parameter, b}, *base);
  });
}

}  // namespace quorvane
