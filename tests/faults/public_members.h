#pragma once

#include <set>
#include <string>
#include <string_view>

namespace quorvane {

// The names of the public member functions that a header declares in a class and that may change
// something: all but the const ones, constructors, operators and signals. Throws std::runtime_error
// when the header has no such class.
std::set<std::string> changingMembers(std::string_view header, std::string_view className);

}  // namespace quorvane
