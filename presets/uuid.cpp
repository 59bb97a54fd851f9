#include "presets/uuid.h"

#include <uuid/uuid.h>

#include <cstring>

namespace quorvane {
namespace {

constexpr std::size_t textLength = 36;

}  // namespace

UUID UUID::random() {
  UUID result;
  uuid_generate_random(result.bytes_.data());
  return result;
}

std::optional<UUID> UUID::parse(std::string_view text) {
  // strlen() detects a zero byte inside, where uuid_parse() would stop.
  const std::string terminated(text);
  UUID result;
  if (std::strlen(terminated.c_str()) != textLength || text.size() != textLength ||
      uuid_parse(terminated.c_str(), result.bytes_.data()) != 0) {
    return std::nullopt;
  }
  return result;
}

std::string UUID::text() const {
  std::array<char, textLength + 1> text{};
  uuid_unparse_upper(bytes_.data(), text.data());
  return text.data();
}

}  // namespace quorvane
