#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "fuzz/properties.h"

namespace {

using quorvane::Fuzz::Property;

std::optional<Property> property;

// All fuzzers are this program; the program's name selects the property: fuzz_PROPERTY.
Property propertyOf(const char* program) {
  constexpr std::string_view prefix = "fuzz_";
  const std::string name = std::filesystem::path(program).filename();
  return quorvane::Fuzz::propertyNamed(std::string_view(name).substr(prefix.size()));
}

}  // namespace

// NOLINTBEGIN(readability-identifier-naming): the names are libFuzzer's

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** argv) {
  property = propertyOf((*argv)[0]);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  property.value().check({data, size});
  return 0;
}

// NOLINTEND(readability-identifier-naming)
