#pragma once

#include <string_view>

namespace quorvane {

// The udev rule that lets the user at the machine open a wheel base: the file that gets installed,
// byte for byte.
std::string_view udevRuleText();

}  // namespace quorvane
