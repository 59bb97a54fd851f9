#pragma once

#include <QWidget>

class QScrollArea;
class QVBoxLayout;

namespace quorvane {

// A column of text beside a list: scrolls vertically, has a line between it and the list, and a
// width that grows with the font.
class SidePanel final : public QWidget {
  Q_OBJECT

 public:
  explicit SidePanel(QWidget* parent = nullptr);

  // Makes a panel the whole content of a widget, which gets its width.
  static SidePanel* in(QWidget& widget);

  // For the parts, from the top.
  QVBoxLayout& column() { return *column_; }

  QScrollArea& scroll() { return *scroll_; }

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void placeLine();

  QScrollArea* scroll_;
  QVBoxLayout* column_;
};

}  // namespace quorvane
