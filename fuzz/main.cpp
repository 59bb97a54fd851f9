#include <cstddef>
#include <cstdint>

#include "fuzz/properties.h"

// NOLINTBEGIN(readability-identifier-naming): the name that libFuzzer calls with every input.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

// The build says which property this fuzzer is for.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const quorvane::Fuzz::Property property = quorvane::Fuzz::propertyNamed(QUORVANE_PROPERTY);
  property.check({data, size});
  return 0;
}

// NOLINTEND(readability-identifier-naming)
