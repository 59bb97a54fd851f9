#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quorvane {

// A universally unique identifier; all zeros unless made otherwise.
class UUID {
 public:
  UUID() = default;

  // A new one, of version 4. Any thread may call.
  static UUID random();

  // Reads the 8-4-4-4-12 form in either case, of any version.
  static std::optional<UUID> parse(std::string_view text);

  // That form in upper case.
  std::string text() const;

  auto operator<=>(const UUID&) const = default;  // NOLINT(modernize-use-nullptr): a false alarm

 private:
  std::array<std::uint8_t, 16> bytes_{};
};

}  // namespace quorvane
