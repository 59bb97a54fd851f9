#pragma once

#include "ui/model/view.h"
#include "ui/presets/strip_columns.h"

namespace quorvane {

// The codes of the settings above the presets' values, with the values on the base now. It has no
// height while there is no strip or a strip needs several lines, since these repeat the codes.
class CodesBar final : public View {
  Q_OBJECT

 public:
  explicit CodesBar(AppModel& model, QWidget* parent = nullptr);

  // Puts the codes above a strip of this width that begins at `left`; hides them for a width of 0.
  // Its title may use the room from `titleLeft` to `right`. All are reckoned from left to right.
  struct Place {
    int left = 0;
    int width = 0;
    int titleLeft = 0;
    int right = 0;
    bool isCompact = false;

    bool operator==(const Place&) const = default;
  };
  void follow(const Place& place);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void render() override;
  void changeEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  struct Cell {
    QString code;
    QString value;  // empty without a menu

    bool operator==(const Cell&) const = default;
  };

  StripColumns columns() const {
    return {words_, static_cast<int>(cells_.size()), place_.width, place_.isCompact};
  }
  QRect titleRect() const;
  void paintCells(QPainter& painter, int top) const;
  void write(QPainter& painter, const QRect& rect, Qt::Alignment alignment,
             const QString& words) const;

  std::vector<Cell> cells_;
  QString title_;  // "On the base now, set C"; empty without a menu
  Place place_;
  StripWords words_;
};

}  // namespace quorvane
