// The layout and the painting of ParameterRow.

#include <QPainter>
#include <algorithm>

#include "ui/kit/button.h"
#include "ui/kit/elided_label.h"
#include "ui/kit/metrics.h"
#include "ui/kit/painting.h"
#include "ui/kit/pickers.h"
#include "ui/kit/readout.h"
#include "ui/kit/text.h"
#include "ui/kit/theme.h"
#include "ui/kit/toggle.h"
#include "ui/kit/value_slider.h"
#include "ui/tuning/parameter_row.h"
#include "ui/tuning/row_layout.h"

namespace quorvane {

void ParameterRow::place() {
  const RowLayout::Columns& c = isNarrow_ ? RowLayout::narrow : RowLayout::usual;
  const int right = std::min(width(), Metrics::contentWidth);
  int x = c.inset + RowLayout::plateWidth + RowLayout::plateGap;
  title_->setGeometry(x, 0, c.title, height());
  const int controlLeft = x + c.title + c.gap - RowLayout::sliderMargin;

  x = right - c.inset - RowLayout::revertSize;
  revert_->setGeometry(x, (height() - RowLayout::revertSize) / 2, RowLayout::revertSize,
                       RowLayout::revertSize);
  help_->setGeometry(revert_->geometry());
  x -= c.state + c.gap;
  const int readoutLeft = x - c.readout;
  const int controlRight = std::min(controlLeft + RowLayout::widestControl,
                                    readoutLeft - c.gap + RowLayout::sliderMargin);
  const auto centred = [&](QWidget* widget, int left, int width) {
    const int tall = std::min(height(), widget->sizeHint().height());
    widget->setGeometry(left, (height() - tall) / 2, width, tall);
  };
  if (readout_ != nullptr) centred(readout_, readoutLeft, c.readout);
  if (segments_ != nullptr)
    centred(segments_, controlLeft + RowLayout::sliderMargin, segments_->sizeHint().width());
  if (picker_ != nullptr)
    centred(picker_, controlLeft + RowLayout::sliderMargin, picker_->sizeHint().width());
  if (slider_ == nullptr) return;
  int sliderRight = controlRight;
  if (toggle_ != nullptr) {
    const int width = toggle_->sizeHint().width();
    // A common width, so that switches with words of different lengths are aligned.
    constexpr int toggleColumn = 86;
    const int left = controlRight - std::max(width, toggleColumn);
    centred(toggle_, left, width);
    sliderRight = left;
  }
  slider_->setGeometry(controlLeft, 0, std::max(0, sliderRight - controlLeft), height());
}

void ParameterRow::resizeEvent(QResizeEvent* /*event*/) { place(); }

QRect ParameterRow::stateRect() const {
  const RowLayout::Columns& c = isNarrow_ ? RowLayout::narrow : RowLayout::usual;
  const int right =
      std::min(width(), Metrics::contentWidth) - c.inset - RowLayout::revertSize - c.gap;
  return {right - c.state + c.gap, 0, c.state, height()};
}

void ParameterRow::paintEvent(QPaintEvent* /*event*/) {
  const Theme& t = theme();
  QPainter painter(this);
  const bool isMarked = isCurrent_ && isExplainedBeside_;
  painter.fillRect(rect(), isChanged() ? t.tint : isMarked ? t.soft : t.surface);
  if (isChanged()) drawEdge(painter, rect(), Qt::LeftEdge, t.signal, RowLayout::changeBar);
  drawEdge(painter, rect(), Qt::BottomEdge, t.hairline);
  paintName(painter);
  paintState(painter);
}

// Paints the code's plate and, if no field shows it, the value.
void ParameterRow::paintName(QPainter& painter) const {
  const Theme& t = theme();
  const RowLayout::Columns& c = isNarrow_ ? RowLayout::narrow : RowLayout::usual;
  const QRect plate(c.inset, (height() - RowLayout::plateHeight) / 2, RowLayout::plateWidth,
                    RowLayout::plateHeight);
  drawBox(painter, plate, Metrics::plateRadius, isChanged() ? t.pill : t.well, QColor());
  painter.setFont(Metrics::font(Metrics::Type::fixed));
  painter.setPen(isChanged() ? t.brandText : t.ink2);
  painter.drawText(plate, Qt::AlignCenter, text(state_.parameter.code()));
  if (readout_ != nullptr) return;
  painter.setFont(Metrics::font(Metrics::Type::value));
  painter.setPen(t.ink);
  painter.drawText(QRect(stateRect().left() - c.gap - c.readout, 0, c.readout, height()),
                   Qt::AlignCenter, text(format(state_, state_.shown())));
}

// Paints "Changed", the old value and the notice of a change at the base: side by side if there is
// room, else in two lines.
void ParameterRow::paintState(QPainter& painter) const {
  const Theme& t = theme();
  const QFont callout = Metrics::font(Metrics::Type::callout);
  const int line = QFontMetrics(callout).height();
  const bool isNoticed = notice_.isActive();
  QRect box = stateRect();
  const auto write = [&](const QRect& rect, const QString& words) {
    painter.setFont(callout);
    painter.setPen(t.ink2);
    painter.drawText(rect, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextWordWrap, words);
  };
  if (!isChanged()) {
    if (isNoticed) write(box, QString::fromLatin1(RowLayout::notice));
    return;
  }
  const QFont pillFont = Metrics::font(Metrics::Type::pill);
  const QFontMetrics pillMetrics(pillFont);
  const QString changed = QString::fromLatin1(RowLayout::changed);
  const QSize pillSize(pillMetrics.horizontalAdvance(changed) + 2 * RowLayout::pillPadding,
                       std::max(Metrics::pillHeight, pillMetrics.height() + 2));
  const bool isTwoLines = isNarrow_ || isNoticed;
  const int top = (height() - pillSize.height() - (isTwoLines ? line : 0)) / 2;
  const QRect pill(QPoint(box.left(), top), pillSize);
  drawBox(painter, pill, pill.height() / 2.0, t.pill, QColor());
  painter.setFont(pillFont);
  painter.setPen(t.brandText);
  painter.drawText(pill, Qt::AlignCenter, changed);
  const QRect below(box.left(), pill.bottom() + 1, box.width(), line);
  const QRect beside(pill.right() + 1 + Metrics::gap, pill.top(),
                     box.right() - pill.right() - Metrics::gap, pill.height());
  write(isNarrow_ ? below : beside,
        QStringLiteral("was %1").arg(text(format(state_, state_.current))));
  if (isNoticed && !isNarrow_) write(below, QString::fromLatin1(RowLayout::notice));
}

}  // namespace quorvane
