#pragma once

#include <string_view>

namespace quorvane {

// The udev rule that lets the user at the machine open a wheel base: the file to install, byte for
// byte.
std::string_view udevRuleText();

}  // namespace quorvane
