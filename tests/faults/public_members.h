#pragma once

#include <set>
#include <string>
#include <string_view>

namespace quorvane {

// The names of a class's public member functions that may change something, as its header declares
// them: all except const ones, constructors, operators and signals. Throws std::runtime_error if
// the header has no such class.
std::set<std::string> changingMembers(std::string_view header, std::string_view className);

}  // namespace quorvane
