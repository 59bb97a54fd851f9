#pragma once

#include <string>

#include "platform/survey.h"

namespace quorvane {

// Commands to type outside of the sandbox that this program runs in, one line each.

// Installs the udev rule on the system.
std::string installRuleOutside(const SandboxFacts& sandbox);

// Gives the sandbox access to the devices of the system.
std::string allowDevicesOutside(const SandboxFacts& sandbox);

}  // namespace quorvane
