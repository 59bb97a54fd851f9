#pragma once

#include <cstdint>
#include <string_view>

namespace quorvane {

// Ends the program with one line on standard error, in every build type. For broken internal
// invariants only; anything a device, a file or a person can cause is an error, not an invariant.
[[noreturn]] void invariantFailed(std::string_view what);

inline void invariant(bool holds, std::string_view what) {
  if (!holds) [[unlikely]] {
    invariantFailed(what);
  }
}

// Arithmetic whose overflow is a broken invariant.
std::int64_t checkedAdd(std::int64_t a, std::int64_t b, std::string_view what);
std::int64_t checkedMultiply(std::int64_t a, std::int64_t b, std::string_view what);

// The value as a byte; a value outside 0...255 is a broken invariant.
std::uint8_t checkedByte(std::int64_t value, std::string_view what);

}  // namespace quorvane
