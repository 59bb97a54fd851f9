#pragma once

#include <QAbstractButton>

#include "ui/kit/mark.h"

namespace quorvane {

// A switch with a label at its right.
class Toggle final : public QAbstractButton {
  Q_OBJECT

 public:
  explicit Toggle(const QString& word, QWidget* parent = nullptr);

  // Shows the state, in the colour of the mark.
  void show(bool on, Mark mark);

  QRect switchRect() const;
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 signals:
  void chosen(bool on);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Mark mark_ = Mark::none;
};

}  // namespace quorvane
