#pragma once

#include <QCheckBox>
#include <QPainter>

namespace quorvane {

// Draws a box with a tick, or a dash for a partial choice. A `prominent` one has the brand colour:
// what it ticks will be changed.
void drawTickBox(QPainter& painter, const QRect& box, Qt::CheckState state, bool isProminent,
                 bool isEnabled = true);

// The side of the box beside body text.
int tickBoxSide();

// A box to tick with an optional word at its right. A click on a partial choice ticks it.
class TickBox final : public QCheckBox {
  Q_OBJECT

 public:
  enum class Kind { plain, prominent };

  explicit TickBox(const QString& word, Kind kind = Kind::plain, QWidget* parent = nullptr);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void nextCheckState() override;
  bool hitButton(const QPoint& position) const override { return rect().contains(position); }
  void paintEvent(QPaintEvent* event) override;

 private:
  const Kind kind_;
};

}  // namespace quorvane
