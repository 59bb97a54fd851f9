#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string_view>
#include <vector>

#include "presets/tuning_preset.h"
#include "protocol/product.h"
#include "protocol/tuning_snapshot.h"

namespace quorvane {

// Edits that are not written yet, in display units, sorted in menu order.
using StagedValues = std::map<TuningParameter, std::int64_t>;

// Whether writing the value would change nothing: it is the current value, or it is the automatic
// steering angle (0) while that is active. False without a menu.
bool isCurrentValue(const ParameterValue& wanted, const std::optional<TuningSnapshot>& menu,
                    const std::optional<FanatecProduct>& product);

// Parses edits to stage, such as "SEN=900,FF=80". Skips invalid pieces.
std::vector<ParameterValue> parseDemoStage(std::string_view text);

}  // namespace quorvane
