#include "platform/fields.h"

namespace quorvane {

std::vector<std::string_view> split(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  while (true) {
    const std::size_t end = text.find(separator);
    parts.push_back(text.substr(0, end));
    if (end == std::string_view::npos) return parts;
    text.remove_prefix(end + 1);
  }
}

std::vector<std::string_view> words(std::string_view text) {
  std::vector<std::string_view> parts = split(text, ' ');
  std::erase_if(parts, [](std::string_view part) { return part.empty(); });
  return parts;
}

}  // namespace quorvane
