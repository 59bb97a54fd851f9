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

// Edits that are not written yet, in display units and in menu order.
using StagedValues = std::map<TuningParameter, std::int64_t>;

// Whether writing the value would leave the menu as it is: it is the current one, or it is the
// automatic steering angle (0) while that is in force. Never without a menu.
bool isCurrentValue(const ParameterValue& wanted, const std::optional<TuningSnapshot>& menu,
                    const std::optional<FanatecProduct>& product);

// Reads edits to stage, "SEN=900,FF=80". Pieces that are no edit are skipped.
std::vector<ParameterValue> parseDemoStage(std::string_view text);

}  // namespace quorvane
