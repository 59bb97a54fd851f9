#pragma once

#include <QWidget>

namespace quorvane {

class TickBox;

// The captions above the rows of a comparison, with a box that ticks all of them.
class CompareHeader final : public QWidget {
  Q_OBJECT

 public:
  explicit CompareHeader(QWidget* parent = nullptr);

  // Of all rows. Without a row that can be ticked the box is hidden.
  void show(Qt::CheckState allTicked, bool isTickable);
  using QWidget::show;

  // The width of the rows below, which a scroll bar may narrow.
  void setRowWidth(int width);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 signals:
  void allTicked(bool isTicked);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  QRect rows() const;
  void place();

  TickBox* box_;
  int rowWidth_ = 0;
};

}  // namespace quorvane
