// The painting of ParameterRow.

#include <QPainter>
#include <algorithm>

#include "ui/kit/metrics.h"
#include "ui/kit/mirroring.h"
#include "ui/kit/painting.h"
#include "ui/kit/symbols.h"
#include "ui/kit/text.h"
#include "ui/kit/theme.h"
#include "ui/tuning/parameter_row.h"
#include "ui/tuning/row_layout.h"

namespace quorvane {
namespace {

// One line in the font of notes. The painter knows the direction of the layout.
void writeLine(QPainter& painter, const QRect& rect, const QString& words, const QColor& ink) {
  painter.setFont(Metrics::font(Metrics::Type::callout));
  painter.setPen(ink);
  painter.drawText(
      rect, lineFlags(words, Qt::AlignLeft | Qt::AlignVCenter, painter.layoutDirection()), words);
}

// The symbol is where the line begins.
void writeWithSymbol(QPainter& painter, const QRect& rect, const char* symbol, const QString& words,
                     const QColor& ink) {
  const int side = std::min(Metrics::symbolSide(), rect.height());
  const Qt::LayoutDirection layout = painter.layoutDirection();
  const QRect place = firstPart(rect, side, layout);
  drawSymbol(painter, QPointF(place.left(), place.top() + (place.height() - side) / 2.0),
             QLatin1String(symbol), side, ink);
  writeLine(painter, withoutFirst(rect, side + RowLayout::symbolGap, layout), words, ink);
}

}  // namespace

void ParameterRow::paintEvent(QPaintEvent* /*event*/) {
  const Theme& t = theme();
  QPainter painter(this);
  painter.setLayoutDirection(layoutDirection());
  const bool isMarked = isCurrent_ && isExplainedBeside_;
  painter.fillRect(rect(), markGround(mark(), isMarked ? t.soft : t.surface));
  if (isChanged()) {
    const Qt::Edge begin = layoutDirection() == Qt::RightToLeft ? Qt::RightEdge : Qt::LeftEdge;
    drawEdge(painter, rect(), begin, markColour(mark(), t.signal), RowLayout::changeBar);
  }
  drawEdge(painter, rect(), Qt::BottomEdge, t.hairline);
  paintName(painter);
  paintState(painter);
  paintNote(painter);
}

// Paints the code's plate and, if no field shows it, the value.
void ParameterRow::paintName(QPainter& painter) const {
  const Theme& t = theme();
  drawBox(painter, places_.plate, Metrics::plateRadius, markPlate(mark(), t.well), QColor());
  painter.setFont(Metrics::font(Metrics::Type::fixed));
  painter.setPen(markText(mark(), t.ink2));
  painter.drawText(places_.plate, Qt::AlignCenter, text(state_.parameter.code()));
  if (readout_ != nullptr) return;
  painter.setFont(Metrics::font(Metrics::Type::value));
  painter.setPen(t.ink);
  painter.drawText(places_.readout, Qt::AlignCenter, text(format(state_, state_.shown())));
}

void ParameterRow::paintState(QPainter& painter) const {
  if (isChanged()) {
    paintChange(painter);
  } else if (notice_ != Notice::none) {
    paintNotice(painter, places_.state);
  }
}

// Paints "Changed" and the old value; in one line, a notice or the link "Try again" is below.
void ParameterRow::paintChange(QPainter& painter) const {
  const Theme& t = theme();
  const QFont pillFont = Metrics::font(Metrics::Type::pill);
  const QFontMetrics pillMetrics(pillFont);
  const QString changed = QLatin1String(RowLayout::changed);
  const QSize pillSize(pillMetrics.horizontalAdvance(changed) + 2 * RowLayout::pillPadding,
                       std::max(Metrics::pillHeight, pillMetrics.height() + 2));
  const int callout = QFontMetrics(Metrics::font(Metrics::Type::callout)).height();
  const bool isOneLine = columns_.form == RowLayout::Form::oneLine;
  const bool isNoticed = isOneLine && notice_ == Notice::changedAtBase && !state_.isNotTaken();
  const bool isTwoLines = isNoticed || (isOneLine && state_.isNotTaken());
  const QRect& box = places_.state;
  const int top = box.top() + (box.height() - pillSize.height() - (isTwoLines ? callout : 0)) / 2;
  const QRect line(box.left(), top, box.width(), pillSize.height());
  const QRect pill = firstPart(line, pillSize.width(), layoutDirection());
  drawBox(painter, pill, pill.height() / 2.0, markPlate(mark(), t.pill), QColor());
  painter.setFont(pillFont);
  painter.setPen(markText(mark(), t.brandText));
  painter.drawText(pill, Qt::AlignCenter, changed);
  writeLine(painter, withoutFirst(line, pill.width() + Metrics::gap, layoutDirection()), oldValue(),
            t.ink2);
  if (isNoticed) paintNotice(painter, {box.left(), pill.bottom() + 1, box.width(), callout});
}

// Paints what has happened to the value a moment ago.
void ParameterRow::paintNotice(QPainter& painter, const QRect& rect) const {
  if (notice_ == Notice::taken) {
    writeWithSymbol(painter, rect, "checkmark", noticeText(), theme().okText);
  } else {
    writeLine(painter, rect, noticeText(), theme().ink2);
  }
}

// Paints what became of the staged value.
void ParameterRow::paintNote(QPainter& painter) const {
  if (note_.isEmpty()) return;
  if (state_.isNotTaken()) {
    writeWithSymbol(painter, places_.note, "exclamationmark.triangle.fill", note_, theme().error);
  } else {
    writeLine(painter, places_.note, note_, theme().ink2);
  }
}

}  // namespace quorvane
