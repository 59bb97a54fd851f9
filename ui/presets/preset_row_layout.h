#pragma once

#include <QFont>
#include <QRect>
#include <QSize>
#include <optional>

#include "protocol/product.h"
#include "ui/presets/strip_columns.h"

namespace quorvane {

// What all rows of presets have in common: the settings of their base, and sizes from the font.
struct PresetForm {
  std::optional<FanatecProduct> product;
  bool isCompact = false;
  QFont font;     // the system font
  int cells = 0;  // settings
  int nameHeight = 0;
  int lineHeight = 0;
  int widestBadge = 0;
  StripWords words;
  QSize load, apply, icon;  // buttons

  static PresetForm of(const std::optional<FanatecProduct>& product, bool isCompact);

  bool operator==(const PresetForm&) const = default;
};

// Where the parts of a row are, for left-to-right text. A part without room has no width. Each
// button has a column of its own in all rows.
struct PresetRowLayout {
  QRect name;     // and in a compact row the game
  QRect details;  // game and source
  QRect notes;
  QRect strip;
  QRect badge;  // without width in narrow rows: the badge is before the game
  QRect load, apply, menu, trash;
  int height = 0;

  // `notesHeight` is 0 without notes.
  static PresetRowLayout of(int width, const PresetForm& form, int notesHeight);
};

}  // namespace quorvane
