#pragma once

namespace quorvane {

// The widths of the widest values of a strip, in the font of strong values.
struct StripWords {
  int automatic = 0;  // "AUTO"
  int hundred = 0;    // "100"

  // In the current font.
  static StripWords measured();

  bool operator==(const StripWords&) const = default;
};

// Where the cells of a strip of values are, one for each setting of a base. All sizes are in
// logical pixels and depend on the font. The cells grow with the room up to a widest size. When
// they do not fit in one line, they go on in further lines: in two halves if these fit.
struct StripColumns {
  static constexpr int gap = 6;         // between the cells
  static constexpr int compactGap = 3;  // likewise

  StripWords words;
  int count = 0;           // cells
  int width = 0;           // available
  bool isCompact = false;  // one line of cells without bars; the first one is wider

  int perLine() const;
  int lines() const;
  int left(int column) const;  // of a cell
  int cellWidth(int column) const;
  int lineWidth() const;  // of a full line

  // The width that all cells need in one line.
  static int narrowestLine(const StripWords& words, int count, bool isCompact);

 private:
  int compactWidth(int column) const;
  int widest() const;
};

}  // namespace quorvane
