#pragma once

#include "hid/return_code.h"

namespace quorvane {

// A failure without a code of its own in HIDReturnCode: an I/O error (errno 5).
inline constexpr HIDReturn otherCode = 0x0000C005;

}  // namespace quorvane
