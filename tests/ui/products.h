#pragma once

#include "protocol/product.h"

// One product for each kind of menu.
namespace quorvane {

inline const auto directDrive = FanatecProduct::lookup(0x0020);
inline const auto cslElite = FanatecProduct::lookup(0x0E03);
inline const auto classic = FanatecProduct::lookup(0x0001);

}  // namespace quorvane
