#pragma once

#include <QColor>

namespace quorvane {

// How a control marks its value.
enum class Mark {
  none,     // on the base
  changed,  // not on the base yet
  refused   // not taken by the base
};

// The colour of the mark; `unmarked` without one.
QColor markColour(Mark mark, const QColor& unmarked);

// The colour of texts about a marked value; `unmarked` without a mark.
QColor markText(Mark mark, const QColor& unmarked);

// The grounds of a marked value's row, and of plates and pills in it; `unmarked` likewise.
QColor markGround(Mark mark, const QColor& unmarked);
QColor markPlate(Mark mark, const QColor& unmarked);

// The colour of a line on the colour of the mark.
QColor onMark(Mark mark);

}  // namespace quorvane
