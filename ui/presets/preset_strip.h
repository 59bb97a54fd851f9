#pragma once

#include <QWidget>
#include <optional>
#include <vector>

#include "presets/tuning_preset.h"

namespace quorvane {

// A preset's values side by side: one cell for each setting of the base, so that presets in a list
// can be compared. A bar shows the position of a number in its range; a dot stands for a setting
// that the preset does not change. Cells wrap into further lines.
class PresetStrip final : public QWidget {
  Q_OBJECT

 public:
  PresetStrip(const TuningPreset& preset, const std::optional<FanatecProduct>& product,
              QWidget* parent = nullptr);

  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override;
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  struct Cell {
    QString code;
    QString value;               // empty: the preset does not change the setting
    std::optional<qreal> place;  // in the range, 0 to 1; numbers only
  };

  int columns(int width) const;
  int pitch(int width) const;
  void paint(QPainter& painter, const Cell& cell, const QRect& rect) const;

  std::vector<Cell> cells_;
};

}  // namespace quorvane
