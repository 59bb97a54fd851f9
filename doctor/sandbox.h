#pragma once

#include <string>

#include "hid/survey.h"

namespace quorvane {

// What to type outside of the sandbox that this program runs in, on one line each.

// Installs the udev rule on the system.
std::string installRuleOutside(const SandboxFacts& sandbox);

// Lets the sandbox have the devices of the system.
std::string allowDevicesOutside(const SandboxFacts& sandbox);

}  // namespace quorvane
