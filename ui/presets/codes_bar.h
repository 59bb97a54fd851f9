#pragma once

#include "ui/model/view.h"

namespace quorvane {

// The codes of the settings above the presets' values, with the values on the base now. It has no
// height while a strip needs several lines, since these repeat the codes.
class CodesBar final : public View {
  Q_OBJECT

 public:
  explicit CodesBar(AppModel& model, QWidget* parent = nullptr);

  // Puts the codes above a strip of this width that begins at `left`.
  void follow(int left, int width);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void render() override;
  void paintEvent(QPaintEvent* event) override;

 private:
  struct Cell {
    QString code;
    QString value;  // empty without a menu

    bool operator==(const Cell&) const = default;
  };

  bool isTitleAbove() const;

  std::vector<Cell> cells_;
  QString title_;  // "On the base now, set C"; empty without a menu
  int left_ = 0;
  int stripWidth_ = 0;
};

}  // namespace quorvane
