#pragma once

#include <optional>
#include <string>

#include "presets/tuning_preset.h"
#include "protocol/product.h"

namespace quorvane {

// The values of a preset as one line to send to people: "SEN AUTO, FF 100, FFS PEAK, DRI -3". In
// menu order, in display units, without units. `product` decides which steering angle is written as
// AUTO; settings that its menu lacks are written too. Leaves out the set's number, which belongs to
// no preset, and codes that are no setting. Empty for a preset without values.
std::string settingsText(const TuningPreset& preset, const std::optional<FanatecProduct>& product);

}  // namespace quorvane
