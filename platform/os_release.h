#pragma once

#include <string>
#include <string_view>

#include "platform/system_files.h"

namespace quorvane {

// The value of the first line "KEY=VALUE", without surrounding double quotes; empty without such a
// line.
std::string assignedValue(const std::string& text, std::string_view key);

// A field of os-release(5), such as "ID" or "PRETTY_NAME"; empty when missing.
std::string osReleaseField(const SystemFiles& system, std::string_view key);

}  // namespace quorvane
