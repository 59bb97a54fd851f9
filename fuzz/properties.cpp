#include "fuzz/properties.h"

#include <algorithm>
#include <array>

#include "support/invariant.h"

namespace quorvane::Fuzz {
namespace {

constexpr std::array<Property, 10> all{{
    {"descriptor", descriptor},
    {"elements", elements},
    {"reports", reports},
    {"preset_file", presetFile},
    {"share_file", shareFile},
    {"uevent", uevent},
    {"words", words},
    {"demo_stage", demoStage},
    {"settings_text", settingsText},
    {"simbase", simbase},
}};

constexpr Property plantedProperty{"planted", planted};

}  // namespace

std::span<const Property> properties() { return all; }

Property propertyNamed(std::string_view name) {
  if (name == plantedProperty.name) return plantedProperty;
  const auto* const found = std::find_if(
      all.begin(), all.end(), [name](const Property& property) { return property.name == name; });
  invariant(found != all.end(), "there is no such property");
  return *found;
}

}  // namespace quorvane::Fuzz
