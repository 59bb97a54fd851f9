#include "ui/kit/text_link.h"

#include <QPainter>

#include "ui/kit/metrics.h"
#include "ui/kit/theme.h"

namespace quorvane {

TextLink::TextLink(const QString& word, QWidget* parent) : QAbstractButton(parent) {
  setText(word);
  setFont(Metrics::font(Metrics::Type::callout));
  setFocusPolicy(Qt::StrongFocus);
  setCursor(Qt::PointingHandCursor);
  setAttribute(Qt::WA_Hover);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize TextLink::sizeHint() const {
  const QFontMetrics metrics(font());
  return {metrics.horizontalAdvance(text()), metrics.height()};
}

void TextLink::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  QFont underlined = font();
  underlined.setUnderline(underMouse() && isEnabled());
  painter.setFont(underlined);
  painter.setPen(isEnabled() ? theme().brandText : theme().inkDisabled);
  painter.drawText(rect(), Qt::AlignCenter, text());
}

}  // namespace quorvane
