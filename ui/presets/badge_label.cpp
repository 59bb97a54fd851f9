#include "ui/presets/badge_label.h"

#include <QPainter>

#include "ui/kit/metrics.h"
#include "ui/kit/mirroring.h"
#include "ui/kit/painting.h"
#include "ui/kit/symbols.h"
#include "ui/kit/text.h"
#include "ui/kit/theme.h"

namespace quorvane {
namespace {

constexpr int badgeSymbolSize = 13;
constexpr int badgeSymbolGap = 6;

QFont badgeFont() { return Metrics::font(Metrics::Type::callout); }

}  // namespace

BadgeLabel::BadgeLabel(QWidget* parent) : QWidget(parent) {
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  setFont(badgeFont());
}

void BadgeLabel::show(const PresetBadge& badge) {
  if (badge == badge_) return;
  badge_ = badge;
  setAccessibleName(text(badge.text));
  updateGeometry();
  update();
}

QString BadgeLabel::symbol() const {
  switch (badge_.kind) {
    case PresetBadge::Kind::same:
      return QStringLiteral("checkmark");
    case PresetBadge::Kind::stronger:
      return QStringLiteral("exclamationmark.triangle.fill");
    case PresetBadge::Kind::none:
    case PresetBadge::Kind::differs:
      return {};
  }
  return {};
}

int BadgeLabel::widest() {
  const QFontMetrics metrics(badgeFont());
  return badgeSymbolSize + badgeSymbolGap +
         metrics.horizontalAdvance(QStringLiteral("Stronger: FUL 100 → 100"));
}

QSize BadgeLabel::sizeHint() const {
  const int words = fontMetrics().horizontalAdvance(text(badge_.text));
  return {words + (symbol().isEmpty() ? 0 : badgeSymbolSize + badgeSymbolGap),
          fontMetrics().height()};
}

void BadgeLabel::paintEvent(QPaintEvent* /*event*/) {
  const Theme& t = theme();
  const bool isSame = badge_.kind == PresetBadge::Kind::same;
  QPainter painter(this);
  QRect line = rect();
  line.setLeft(width() - sizeHint().width());
  if (!symbol().isEmpty()) {
    const QRectF place(line.left(), (height() - badgeSymbolSize) / 2.0, badgeSymbolSize,
                       badgeSymbolSize);
    drawSymbol(painter, visualRect(*this, place).topLeft(), symbol(), badgeSymbolSize,
               isSame ? t.okText : t.warningIcon);
    line.setLeft(line.left() + badgeSymbolSize + badgeSymbolGap);
  }
  painter.setPen(isSame ? t.okText : t.ink2);
  if (badge_.kind == PresetBadge::Kind::stronger) painter.setPen(t.ink);
  const QString words = text(badge_.text);
  painter.drawText(visualRect(*this, line),
                   lineFlags(words, Qt::AlignLeft | Qt::AlignVCenter, layoutDirection()), words);
}

}  // namespace quorvane
