#pragma once

#include <cstdint>
#include <optional>

#include "presets/tuning_preset.h"
#include "protocol/product.h"

namespace quorvane {

// Whether the product's menu has the setting; always without a product.
bool isOnMenu(TuningParameter parameter, const std::optional<FanatecProduct>& product);

// The byte that TuningParameter::encode() gives, without its exceptions: none for a value that is
// out of range, and for a setting that the product's menu lacks.
std::optional<std::uint8_t> encodedValue(const ParameterValue& value,
                                         const std::optional<FanatecProduct>& product);

// Whether the base can take the value. Without a product: whether any base can.
bool isInRange(const ParameterValue& value, const std::optional<FanatecProduct>& product);

// Whether two values of a setting are in range and have the same byte: AUTO and the angle that the
// menu shows for it; 47 and 40 for a setting in steps of 10. Without a product: on every base that
// has the setting.
bool isSameValue(TuningParameter parameter, std::int64_t a, std::int64_t b,
                 const std::optional<FanatecProduct>& product);

}  // namespace quorvane
