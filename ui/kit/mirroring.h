#pragma once

#include <QMargins>

class QWidget;

namespace quorvane {

// The margins of a widget's layout, reckoned from left to right: swapped if the widget's layout
// runs from right to left, because Qt mirrors a layout's items but not its margins.
QMargins visualMargins(const QWidget& widget, const QMargins& margins);

}  // namespace quorvane
