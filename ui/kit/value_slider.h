#pragma once

#include <QAbstractSlider>
#include <optional>

namespace quorvane {

// A slider for one value of the menu, which draws a change as a distance: the track is filled up to
// the lower of the saved value and the new one, in the brand's colour between the two, with a tick
// at the saved value.
//
// `chosen` tells a value that a person settled on: when the drag ends, and with every key.
class ValueSlider final : public QAbstractSlider {
  Q_OBJECT

 public:
  explicit ValueSlider(QWidget* parent = nullptr);

  // Range, and the step that every move keeps to.
  void setScale(int lowest, int highest, int step);

  // The value shown and the saved one that it differs from, if it does. Does nothing while a person
  // drags.
  void show(int value, std::optional<int> saved);

  // A value off the scale is in force; the place is where switching it off would land.
  void showSpecial(int place);

  QRect capRect() const;
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 signals:
  void chosen(int value);
  void dragged(int value);  // while the button is down

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
  qreal place(int value) const;
  void choose(int value);
  void settle(int value);
  void drag(qreal x);

  std::optional<int> saved_;
  bool isSpecial_ = false;
  bool isShowing_ = false;  // what moves the slider is the program
};

}  // namespace quorvane
