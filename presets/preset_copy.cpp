#include "presets/preset_copy.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>
#include <utility>

#include "support/text.h"

namespace quorvane {
namespace {

constexpr std::string_view copySuffix = " copy";

bool isNumber(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

// The name without " copy" or " copy 2" at its end, if something is left.
std::string_view nameOfOriginal(std::string_view name) {
  std::string_view rest = name;
  const std::size_t space = rest.rfind(' ');
  if (space != std::string_view::npos && isNumber(rest.substr(space + 1))) {
    rest = rest.substr(0, space);
  }
  if (!rest.ends_with(copySuffix) || rest.size() == copySuffix.size()) return name;
  rest.remove_suffix(copySuffix.size());
  return rest;
}

bool isTaken(const std::vector<TuningPreset>& presets, const std::string& name) {
  return std::any_of(presets.begin(), presets.end(), [&](const TuningPreset& preset) {
    return equalIgnoringCase(preset.name, name);
  });
}

}  // namespace

std::string copyName(const std::string& name, const std::vector<TuningPreset>& presets) {
  const std::string first = fmt::format("{}{}", nameOfOriginal(name), copySuffix);
  std::string next = first;
  for (int number = 2; isTaken(presets, next); ++number) next = fmt::format("{} {}", first, number);
  return next;
}

TuningPreset copyOf(const TuningPreset& preset, std::string name) {
  TuningPreset copy = preset;
  copy.id = UUID::random();
  copy.name = std::move(name);
  copy.isBuiltIn = false;
  return copy;
}

}  // namespace quorvane
