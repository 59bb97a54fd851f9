#pragma once

#include <QPointer>
#include <QWidget>

namespace quorvane {

// The ring around the control with the keyboard focus, drawn as an overlay of the window. Visible
// after a key press, hidden after a mouse click.
class FocusRing final : public QWidget {
  Q_OBJECT

 public:
  // A child of the window whose controls it rings.
  explicit FocusRing(QWidget* window);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void follow(QWidget* widget);
  void place();
  void noteInput(bool isKeyboard);

  QPointer<QWidget> ringed_;
};

}  // namespace quorvane
