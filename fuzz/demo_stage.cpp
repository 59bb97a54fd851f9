#include <algorithm>
#include <string>
#include <vector>

#include "app/staging.h"
#include "fuzz/input.h"
#include "fuzz/properties.h"
#include "support/invariant.h"

namespace quorvane::Fuzz {
namespace {

using Edits = std::vector<ParameterValue>;

std::string textOf(const Edits& edits) {
  std::string text;
  for (const auto& [parameter, value] : edits) {
    if (!text.empty()) text += ',';
    text += std::string(parameter.code()) + '=' + std::to_string(value);
  }
  return text;
}

}  // namespace

void demoStage(ByteView bytes) {
  const std::string text = Fuzz::textOf(bytes);
  const Edits edits = parseDemoStage(text);
  invariant(std::ssize(edits) <= std::count(text.begin(), text.end(), ',') + 1,
            "a piece is one edit at most");
  invariant(parseDemoStage(textOf(edits)) == edits, "edits survive as a text");

  Edits twice = edits;
  twice.insert(twice.end(), edits.begin(), edits.end());
  invariant(parseDemoStage(text + ',' + text) == twice, "pieces do not disturb each other");
}

}  // namespace quorvane::Fuzz
