#pragma once

#include <QPointer>
#include <QWidget>

namespace quorvane {

// The ring around the control that has the keyboard's focus, drawn over the window. It shows while
// the keyboard is what people use.
class FocusRing final : public QWidget {
  Q_OBJECT

 public:
  // Belongs to the window whose controls it rings.
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
