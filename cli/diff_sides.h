#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/context.h"
#include "presets/tuning_preset.h"
#include "protocol/product.h"

namespace quorvane {

// What stands before the name of a preset that is a side.
inline constexpr std::string_view presetSidePrefix = "preset:";

// What stands before the ID of a write whose former menu is a side.
inline constexpr std::string_view historySidePrefix = "history:";

// One side of a comparison.
struct DiffSide {
  std::string kind;  // "base", "preset", "history", "file" or "text"
  std::string name;  // for people: "CSL DD, set C (Custom)", a preset's name, "standard input"
  TuningPreset::Values values;
  std::vector<std::string> notUnderstood;  // the rest of a text

  bool isBase() const { return kind == "base"; }
};

struct DiffSides {
  DiffSide left;
  DiffSide right;

  // The product whose menu they are compared on: that of the base, or of the first base that is
  // attached if neither side is a base. None without one.
  std::optional<FanatecProduct> product;
};

// Reads the sides that the words name: "base", "preset:NAME", "history:ID" for
// the menu before a write (the ID or its beginning), "-" for standard input, or a file;
// "FILE#NAME" is one preset of a file with several. A file or standard input has JSON or a text for
// settingsInText(). One word is compared with the base.
//
// Opens the base only if a side is the base, and after reading the other side. Throws UsageError,
// FileError, DecodingError and FanatecError.
DiffSides readDiffSides(const CommandContext& context, std::vector<std::string> words);

}  // namespace quorvane
