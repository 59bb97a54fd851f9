#pragma once

#include <QWidget>

#include "ui/presets/preset_text.h"

namespace quorvane {

// Shows a PresetBadge in one line, at the end of its widget, with a symbol if its kind has one.
class BadgeLabel final : public QWidget {
  Q_OBJECT

 public:
  explicit BadgeLabel(QWidget* parent = nullptr);

  void show(const PresetBadge& badge);
  using QWidget::show;

  // The width that every badge fits in.
  static int widest();

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString symbol() const;

  PresetBadge badge_;
};

}  // namespace quorvane
