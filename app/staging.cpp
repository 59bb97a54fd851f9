#include "app/staging.h"

#include "support/text.h"

namespace quorvane {
namespace {

// The pieces between the separators, empty ones included.
std::vector<std::string_view> split(std::string_view text, char separator) {
  std::vector<std::string_view> pieces;
  for (;;) {
    const std::size_t end = text.find(separator);
    pieces.push_back(text.substr(0, end));
    if (end == std::string_view::npos) return pieces;
    text.remove_prefix(end + 1);
  }
}

std::optional<ParameterValue> parseEdit(std::string_view piece) {
  const auto parts = split(piece, '=');
  if (parts.size() != 2) return std::nullopt;
  const auto parameter = TuningParameter::named(parts[0]);
  const auto value = parseInteger(parts[1]);
  if (!parameter || !value) return std::nullopt;
  return ParameterValue{*parameter, *value};
}

}  // namespace

bool isCurrentValue(const ParameterValue& wanted, const std::optional<TuningSnapshot>& menu,
                    const std::optional<FanatecProduct>& product) {
  if (!menu) return false;
  const TuningParameter parameter = wanted.parameter;
  return parameter.written(menu->value(parameter, product), product) ==
         parameter.written(wanted.value, product);
}

std::vector<ParameterValue> parseDemoStage(std::string_view text) {
  std::vector<ParameterValue> edits;
  for (const std::string_view piece : split(text, ',')) {
    if (const auto edit = parseEdit(piece)) edits.push_back(*edit);
  }
  return edits;
}

}  // namespace quorvane
