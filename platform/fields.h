#pragma once

#include <string_view>
#include <vector>

namespace quorvane {

// The parts of a text between separators; an empty text has one empty part.
std::vector<std::string_view> split(std::string_view text, char separator);

// The parts between spaces; an empty text has none.
std::vector<std::string_view> words(std::string_view text);

}  // namespace quorvane
