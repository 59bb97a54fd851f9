#include "ui/kit/link_row.h"

#include <QDesktopServices>
#include <QPainter>
#include <algorithm>
#include <utility>

#include "ui/kit/metrics.h"
#include "ui/kit/painting.h"
#include "ui/kit/plain_text.h"
#include "ui/kit/symbols.h"
#include "ui/kit/text_width.h"
#include "ui/kit/theme.h"

namespace quorvane {
namespace {

constexpr int textLeft = Metrics::symbolSize + 7;
constexpr QChar breakHere(0x200B);  // zero width space

// Allows a line break after each dot of an address.
QString breakable(QString text) {
  return text.replace(QStringLiteral("."), QStringLiteral(".") + breakHere);
}

}  // namespace

LinkRow::LinkRow(QString symbol, const QString& text, const QUrl& target, const QString& objectName,
                 QWidget* parent)
    : QAbstractButton(parent), symbol_(std::move(symbol)), target_(target) {
  setText(text);
  setObjectName(objectName);
  setAccessibleDescription(target.toString());
  PlainText::setToolTip(*this, target.toString());
  setFocusPolicy(Qt::StrongFocus);
  setCursor(Qt::PointingHandCursor);
  setAttribute(Qt::WA_Hover);
  QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  policy.setHeightForWidth(true);
  setSizePolicy(policy);
  connect(this, &QAbstractButton::clicked, this, [this] { QDesktopServices::openUrl(target_); });
}

QSize LinkRow::sizeHint() const {
  const QFont font = Metrics::font(Metrics::Type::callout);
  return {textLeft + textWidth(font, text()),
          std::max(Metrics::symbolSize, QFontMetrics(font).height())};
}

QSize LinkRow::minimumSizeHint() const {
  const QFont font = Metrics::font(Metrics::Type::callout);
  int widest = 0;
  for (const QString& word : breakable(text()).replace(breakHere, u' ').split(u' ')) {
    widest = std::max(widest, textWidth(font, word));
  }
  return {textLeft + widest, sizeHint().height()};
}

int LinkRow::heightForWidth(int width) const {
  const QFontMetrics metrics(Metrics::font(Metrics::Type::callout));
  const QRect box = metrics.boundingRect(QRect(0, 0, width - textLeft, QWIDGETSIZE_MAX),
                                         Qt::AlignLeft | Qt::TextWordWrap, breakable(text()));
  return std::max(Metrics::symbolSize, box.height());
}

void LinkRow::paintEvent(QPaintEvent* /*event*/) {
  const Theme& t = theme();
  QPainter painter(this);
  const QRectF symbol(0, 0, Metrics::symbolSize, Metrics::symbolSize);
  drawSymbol(painter, visualRect(*this, symbol).topLeft(), symbol_, Metrics::symbolSize,
             t.brandText);
  QFont font = Metrics::font(Metrics::Type::callout);
  font.setUnderline(underMouse());
  painter.setFont(font);
  painter.setPen(t.brandText);
  painter.drawText(visualRect(*this, rect().adjusted(textLeft, 0, 0, 0)),
                   Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, breakable(text()));
}

}  // namespace quorvane
