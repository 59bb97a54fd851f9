#pragma once

#include <QWidget>
#include <optional>
#include <vector>

#include "presets/tuning_preset.h"

namespace quorvane {

// The values of a preset that differ from the base, one in a row: code, title, and "900 deg → 1080
// deg". Without a menu all values of the preset, with no former ones.
class ChangeTable final : public QWidget {
  Q_OBJECT

 public:
  explicit ChangeTable(QWidget* parent = nullptr);

  // Returns how many values are the same as on the base.
  std::size_t show(const TuningPreset& preset, const std::optional<TuningSnapshot>& menu,
                   const std::optional<FanatecProduct>& product);
  using QWidget::show;

  std::size_t count() const { return rows_.size(); }

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return {0, sizeHint().height()}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  struct Row {
    QString code;
    QString title;
    QString now;
    QString then;
  };

  void paintRow(QPainter& painter, const Row& row, QRect rect) const;
  void write(QPainter& painter, const QRect& rect, Qt::Alignment alignment,
             const QString& words) const;
  int widest(QString Row::*text) const;

  std::vector<Row> rows_;
};

}  // namespace quorvane
