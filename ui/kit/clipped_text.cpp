#include "ui/kit/clipped_text.h"

#include <QHelpEvent>
#include <QPainter>
#include <QTextLayout>
#include <QToolTip>

#include "ui/kit/plain_text.h"

namespace quorvane {
namespace {

// The number of characters in the first line.
int firstLine(const QString& text, const QFont& font, int width) {
  QTextLayout layout(text, font);
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  layout.setTextOption(option);
  layout.beginLayout();
  QTextLine line = layout.createLine();
  line.setLineWidth(width);
  layout.endLayout();
  return line.textLength();
}

}  // namespace

ClippedText::ClippedText(const QString& text, QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  setText(text);
  setAccessibleName(text);
  QSizePolicy policy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  policy.setHeightForWidth(true);
  setSizePolicy(policy);
}

int ClippedText::height(int advance, int width, const QFontMetrics& metrics) {
  return (advance <= width ? 1 : 2) * metrics.height();
}

int ClippedText::heightForWidth(int width) const { return height(advance(), width, fontMetrics()); }

QSize ClippedText::sizeHint() const { return {advance(), fontMetrics().height()}; }

void ClippedText::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setPen(
      palette().color(isEnabled() ? QPalette::Normal : QPalette::Disabled, foregroundRole()));
  const QString words = text();
  const int length =
      advance() <= width() ? static_cast<int>(words.size()) : firstLine(words, font(), width());
  const int line = fontMetrics().height();
  painter.drawText(QRect(0, 0, width(), line), Qt::TextSingleLine, words.left(length).trimmed());
  const QString rest = words.mid(length);
  const QString shown = fontMetrics().elidedText(rest, Qt::ElideRight, width());
  painter.drawText(QRect(0, line, width(), line), Qt::TextSingleLine, shown);
  isClipped_ = shown != rest;
}

bool ClippedText::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QLabel::event(event);
  if (isClipped_) {
    PlainText::showToolTip(static_cast<QHelpEvent*>(event)->globalPos(), text(), this);
  } else {
    QToolTip::hideText();
  }
  return true;
}

}  // namespace quorvane
