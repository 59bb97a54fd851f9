#pragma once

#include <QWidget>
#include <optional>
#include <vector>

#include "presets/tuning_preset.h"

namespace quorvane {

// Where the cells of a strip are, one for each setting of a base; they wrap into further lines.
struct StripColumns {
  static constexpr int gap = 6;

  int count = 0;  // cells
  int width = 0;  // available

  int perLine() const;
  int pitch() const;  // from one cell to the next
  int lines() const;
};

// A preset's values side by side: one cell for each setting of the base, so that presets in a list
// can be compared. A bar shows the position of a number in its range; a dot stands for a setting
// that the preset does not change. The page shows the settings' codes once, above all presets; a
// strip of several lines repeats them above each cell.
class PresetStrip final : public QWidget {
  Q_OBJECT

 public:
  PresetStrip(const TuningPreset& preset, const std::optional<FanatecProduct>& product,
              QWidget* parent = nullptr);

  // Shows which values the base has: they are drawn quietly. Without a menu all are drawn alike.
  void compare(const std::optional<TuningSnapshot>& menu);

  // The width that all cells need in one line.
  int narrowestLine() const;

  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override;
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 signals:
  void resized();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* /*event*/) override { emit resized(); }

 private:
  struct Cell {
    QString code;
    QString value;               // empty: the preset does not change the setting
    std::optional<qreal> place;  // in the range, 0 to 1; numbers only
    std::optional<ParameterValue> wanted;
    std::optional<bool> isOnBase;  // none without a menu
  };

  StripColumns columns(int width) const { return {static_cast<int>(cells_.size()), width}; }
  void paint(QPainter& painter, const Cell& cell, const QRect& rect) const;
  void paintBar(QPainter& painter, const Cell& cell, const QRect& rect) const;

  const std::optional<FanatecProduct> product_;
  std::vector<Cell> cells_;
};

}  // namespace quorvane
