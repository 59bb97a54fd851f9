#pragma once

#include <QAbstractButton>

namespace quorvane {

// The caption of a list that can be folded: an arrow, a title and a count. It is checked while the
// list is shown.
class FoldCaption final : public QAbstractButton {
  Q_OBJECT

 public:
  explicit FoldCaption(const QString& title, QWidget* parent = nullptr);

  void show(const QString& count, bool isOpen);
  using QWidget::show;

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString count_;
};

}  // namespace quorvane
