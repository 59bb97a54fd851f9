#pragma once

#include <QAbstractButton>

namespace quorvane {

// A switch with a label at its right.
class Toggle final : public QAbstractButton {
  Q_OBJECT

 public:
  explicit Toggle(const QString& word, QWidget* parent = nullptr);

  // Shows the state; in the brand colour if `changed`, that is, not on the base yet.
  void show(bool on, bool changed);

  QRect switchRect() const;
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 signals:
  void chosen(bool on);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  bool changed_ = false;
};

}  // namespace quorvane
