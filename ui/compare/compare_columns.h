#pragma once

#include <QRect>

namespace quorvane {

// The places of a row's parts, reckoned from left to right. Their widths come from the fonts; the
// title has what is left.
struct CompareColumns {
  QRect box;
  QRect plate;
  QRect title;
  QRect left;
  QRect right;
  QRect number;    // of the change; to the right end of it
  QRect distance;  // a line of 90 pixels
  QRect mark;      // "stronger"

  static CompareColumns of(const QRect& row);

  // From `number` to the end of the row: for words in their place.
  QRect words() const;

  // The width in which the longest title has room.
  static int fullWidth();

  static int rowHeight();
};

}  // namespace quorvane
