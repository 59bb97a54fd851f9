#include "support/invariant.h"

#include <cstdio>
#include <cstdlib>

namespace quorvane {

void invariantFailed(std::string_view what) {
  std::fprintf(stderr, "quorvane: internal fault: %.*s\n", static_cast<int>(what.size()),
               what.data());
  std::abort();
}

std::int64_t checkedAdd(std::int64_t a, std::int64_t b, std::string_view what) {
  std::int64_t sum = 0;
  invariant(!__builtin_add_overflow(a, b, &sum), what);
  return sum;
}

std::int64_t checkedMultiply(std::int64_t a, std::int64_t b, std::string_view what) {
  std::int64_t product = 0;
  invariant(!__builtin_mul_overflow(a, b, &product), what);
  return product;
}

std::uint8_t checkedByte(std::int64_t value, std::string_view what) {
  invariant(value >= 0 && value <= 0xFF, what);
  return static_cast<std::uint8_t>(value);
}

}  // namespace quorvane
