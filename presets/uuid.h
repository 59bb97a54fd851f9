#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quorvane {

// A universally unique identifier; all zeros by default.
class UUID {
 public:
  UUID() = default;

  // A new one, of version 4. Thread-safe.
  static UUID random();

  // Parses the 8-4-4-4-12 form, in upper or lower case, of any version; none for any other text.
  static std::optional<UUID> parse(std::string_view text);

  // The 8-4-4-4-12 form in upper case.
  std::string text() const;

  auto operator<=>(const UUID&) const = default;  // NOLINT(modernize-use-nullptr): a false alarm

 private:
  std::array<std::uint8_t, 16> bytes_{};
};

}  // namespace quorvane
