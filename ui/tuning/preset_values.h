#pragma once

#include <QString>
#include <QWidget>
#include <optional>
#include <vector>

#include "presets/tuning_preset.h"

namespace quorvane {

// What each of some presets uses for one setting: name, bar and value, a line per preset. One
// widget for all lines, so that hundreds cost little.
class PresetValues final : public QWidget {
  Q_OBJECT

 public:
  explicit PresetValues(QWidget* parent = nullptr);

  void show(TuningParameter parameter, const std::vector<TuningPreset>& presets,
            const std::optional<FanatecProduct>& product);
  using QWidget::show;

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  struct Line {
    QString name;
    QString value;
    std::optional<qreal> place;  // of the value in its range, from 0 to 1; none for a word

    bool operator==(const Line&) const = default;
  };

  int lineHeight() const;
  void paint(QPainter& painter, const Line& line, const QRect& rect) const;

  std::vector<Line> lines_;
};

}  // namespace quorvane
