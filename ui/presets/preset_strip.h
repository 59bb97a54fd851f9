#pragma once

#include <QWidget>
#include <memory>
#include <optional>
#include <vector>

#include "presets/tuning_preset.h"
#include "ui/presets/preset_row_layout.h"
#include "ui/presets/strip_columns.h"

namespace quorvane {

class ValueTexts;

// A preset's values side by side: one cell for each setting of the base, so that presets in a list
// can be compared. A bar shows the position of a number in its range; a dot stands for a setting
// that the preset does not change. The page shows the settings' codes once, above all presets; a
// strip of several lines repeats them above each cell. A compact strip has numbers only, in one
// line.
class PresetStrip final : public QWidget {
  Q_OBJECT

 public:
  PresetStrip(const TuningPreset& preset, const PresetForm& form, std::shared_ptr<ValueTexts> texts,
              QWidget* parent = nullptr);

  // Shows which values the base has: they are drawn quietly. Without a menu all are drawn alike.
  void compare(const std::optional<TuningSnapshot>& menu);

  // Gives the values of these settings the ground of a search's hits.
  void highlight(const std::vector<TuningParameter>& parameters);

  // Where the cell of the setting with this number in the menu is; mirrored in a layout from right
  // to left.
  QRect cellRect(std::size_t number) const { return cellRect(columns(width()), number); }

  // The height of a strip with these cells.
  static int heightOf(const StripColumns& columns);

  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override;
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  struct Cell {
    TuningParameter parameter = TuningParameter::slot;
    QString code;
    QString value;               // empty: the preset does not change the setting
    std::optional<qreal> place;  // in the range, 0 to 1; numbers only
    std::optional<ParameterValue> wanted;
    std::optional<bool> isOnBase;  // none without a menu
    bool isHit = false;
  };

  StripColumns columns(int width) const {
    return {words_, static_cast<int>(cells_.size()), width, isCompact_};
  }
  QRect cellRect(const StripColumns& grid, std::size_t number) const;
  void paintCode(QPainter& painter, const Cell& cell, const QRect& rect) const;
  void paintValue(QPainter& painter, const Cell& cell, const QRect& rect) const;
  void paintBar(QPainter& painter, const Cell& cell, const QRect& rect) const;

  const std::optional<FanatecProduct> product_;
  const bool isCompact_;
  const StripWords words_;
  const std::shared_ptr<ValueTexts> texts_;
  std::vector<Cell> cells_;
};

}  // namespace quorvane
