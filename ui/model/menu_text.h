#pragma once

#include <QString>
#include <cstdint>
#include <optional>

#include "protocol/tuning_snapshot.h"

namespace quorvane {

// "set C" of the standard menu, "set 3" of the advanced one.
QString shortSetName(const TuningSnapshot& menu);

// Where a value is in its range, 0 to 1; none for a value that is shown as a word. Values outside
// of the range count as its ends.
std::optional<double> placeInRange(TuningParameter parameter, std::int64_t value,
                                   const std::optional<FanatecProduct>& product);

}  // namespace quorvane
