#pragma once

#include <string_view>

namespace quorvane {

// The version of this build, such as "0.1.0".
std::string_view version();

// The abbreviated commit of this build; "unknown" when it was not built from a checkout.
std::string_view commit();

}  // namespace quorvane
