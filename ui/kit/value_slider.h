#pragma once

#include <QAbstractSlider>
#include <optional>

#include "ui/kit/mark.h"

namespace quorvane {

// A slider for one value of the menu. It draws a change as a distance: the track is filled up to
// the lower of the saved and the new value, and has the colour of its mark between the two, with a
// tick at the saved value. In a layout from right to left the lowest value is at the right.
//
// Emits chosen() when a drag ends and for every key press, not during a drag.
class ValueSlider final : public QAbstractSlider {
  Q_OBJECT

 public:
  explicit ValueSlider(QWidget* parent = nullptr);

  // Sets the range, and the step to which all values are rounded.
  void setScale(int lowest, int highest, int step);

  // Shows a value; `saved` is the saved value if it differs, and `mark` colours the difference.
  // Does nothing during a drag.
  void show(int value, std::optional<int> saved, Mark mark);

  // Shows that a special value is active; `place` is the value after switching it off.
  void showSpecial(int place);

  QRect capRect() const;
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 signals:
  void chosen(int value);
  void dragged(int value);  // while the mouse button is down

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  int rounded(int value) const;
  int valueAt(qreal x) const;
  qreal place(int value) const;  // as from left to right
  void choose(int value);
  void settle(int value);
  void drag(qreal x);

  std::optional<int> saved_;
  Mark mark_ = Mark::changed;  // of a value that differs
  bool isSpecial_ = false;
  bool isShowing_ = false;  // the program moves the slider, not the user
};

}  // namespace quorvane
