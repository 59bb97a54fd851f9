#include "ui/kit/tick_box.h"

#include <algorithm>

#include "ui/kit/metrics.h"
#include "ui/kit/painting.h"
#include "ui/kit/theme.h"

namespace quorvane {
namespace {

constexpr qreal tickPen = 2;

}  // namespace

int tickBoxSide() { return Metrics::symbolSide(); }

void drawTickBox(QPainter& painter, const QRect& box, Qt::CheckState state, bool isProminent,
                 bool isEnabled) {
  const Theme& t = theme();
  if (state == Qt::Unchecked || !isEnabled) {
    drawBox(painter, box, Metrics::plateRadius, isEnabled ? t.surface : t.window,
            isEnabled ? t.edge : t.line);
  } else {
    drawBox(painter, box, Metrics::plateRadius, isProminent ? t.brand : t.switchOn,
            isProminent ? t.brandEdge : t.switchOn);
  }
  if (state == Qt::Unchecked) return;
  const qreal unit = box.width() / 16.0;
  const auto at = [&](qreal x, qreal y) {
    return QRectF(box).topLeft() + QPointF(x * unit, y * unit);
  };
  const QColor mark = !isEnabled ? t.inkDisabled : isProminent ? t.onBrand : t.knobOn;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(mark, tickPen * unit, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  if (state == Qt::PartiallyChecked) {
    drawBar(painter, QRectF(at(4, 7), at(12, 9)), mark);
  } else {
    painter.drawPolyline(QPolygonF({at(4, 8.3), at(7, 11.2), at(12, 5)}));
  }
  painter.restore();
}

TickBox::TickBox(const QString& word, Kind kind, QWidget* parent)
    : QCheckBox(word, parent), kind_(kind) {
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize TickBox::sizeHint() const {
  const int word = text().isEmpty() ? 0 : Metrics::gap + fontMetrics().horizontalAdvance(text());
  return {tickBoxSide() + word, std::max(tickBoxSide(), fontMetrics().height())};
}

void TickBox::nextCheckState() {
  setCheckState(checkState() == Qt::Checked ? Qt::Unchecked : Qt::Checked);
}

void TickBox::paintEvent(QPaintEvent* /*event*/) {
  const Theme& t = theme();
  QPainter painter(this);
  const int side = tickBoxSide();
  const QRect box(0, (height() - side) / 2, side, side);
  drawTickBox(painter, visualRect(*this, box), checkState(), kind_ == Kind::prominent, isEnabled());
  painter.setPen(isEnabled() ? t.ink : t.inkDisabled);
  const QRect word = rect().adjusted(side + Metrics::gap, 0, 0, 0);
  painter.drawText(visualRect(*this, word), Qt::AlignVCenter | Qt::TextSingleLine, text());
}

}  // namespace quorvane
