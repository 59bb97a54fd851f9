#pragma once

#include <QWidget>
#include <optional>
#include <vector>

#include "presets/tuning_preset.h"

namespace quorvane {

// A preset's values side by side: one cell for each setting of the base, so that presets below each
// other compare. A bar shows where a number stands in its range; a setting that the preset leaves
// alone shows a dot. Cells that have no room go on in another line.
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
    QString value;               // empty where the preset leaves the setting alone
    std::optional<qreal> place;  // 0 to 1; of numbers only
  };

  int columns(int width) const;
  int pitch(int width) const;
  void paint(QPainter& painter, const Cell& cell, const QRect& rect) const;

  std::vector<Cell> cells_;
};

}  // namespace quorvane
