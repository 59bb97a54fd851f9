#include "ui/kit/elided_label.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include "ui/kit/hits.h"
#include "ui/kit/mirroring.h"
#include "ui/kit/plain_text.h"
#include "ui/kit/text_width.h"

namespace quorvane {

ElidedLabel::ElidedLabel(Qt::TextElideMode mode, QWidget* parent) : QLabel(parent), mode_(mode) {
  setTextFormat(Qt::PlainText);
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
}

void ElidedLabel::setText(const QString& text) {
  QLabel::setText(text);
  setAccessibleName(text);
}

QSize ElidedLabel::minimumSizeHint() const {
  return {textWidth(font(), QStringLiteral("…")) * 3, fontMetrics().height()};
}

void ElidedLabel::highlight(const QStringList& words) {
  if (words == hits_) return;
  hits_ = words;
  update();
}

bool ElidedLabel::isElided() const { return textWidth(font(), text()) > contentsRect().width(); }

void ElidedLabel::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setPen(
      palette().color(isEnabled() ? QPalette::Normal : QPalette::Disabled, foregroundRole()));
  const QString shown =
      isElided() ? fontMetrics().elidedText(text(), mode_, contentsRect().width()) : text();
  if (!hits_.isEmpty()) {
    const int width = textWidth(font(), shown);
    drawHits(painter, firstPart(contentsRect(), width, layoutDirection()), shown, hits_, font());
  }
  painter.drawText(contentsRect(), lineFlags(shown, alignment(), layoutDirection()), shown);
}

bool ElidedLabel::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip || !toolTip().isEmpty()) return QLabel::event(event);
  if (isElided()) {
    PlainText::showToolTip(static_cast<QHelpEvent*>(event)->globalPos(), text(), this);
  } else {
    QToolTip::hideText();
  }
  return true;
}

}  // namespace quorvane
