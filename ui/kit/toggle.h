#pragma once

#include <QAbstractButton>

namespace quorvane {

// A switch with a word at its right, which belongs to it.
class Toggle final : public QAbstractButton {
  Q_OBJECT

 public:
  explicit Toggle(const QString& word, QWidget* parent = nullptr);

  // What is in force; in the brand's colour when it is not on the base yet.
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
