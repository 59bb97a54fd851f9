#include "ui/presets/fold_caption.h"

#include <QPainter>

#include "ui/kit/metrics.h"
#include "ui/kit/painting.h"
#include "ui/kit/theme.h"

namespace quorvane {
namespace {

constexpr int arrowSize = 14;
constexpr int afterArrow = 6;
constexpr int captionCountGap = 6;

QFont titleFontOfGroup() { return Metrics::font(Metrics::Type::caption); }
QFont countFont() { return Metrics::font(Metrics::Type::callout); }

}  // namespace

FoldCaption::FoldCaption(const QString& title, QWidget* parent) : QAbstractButton(parent) {
  setText(title);
  setCheckable(true);
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void FoldCaption::show(const QString& count, bool isOpen) {
  const QSignalBlocker silent(this);
  setChecked(isOpen);
  setAccessibleName(QStringLiteral("%1, %2").arg(text(), count));
  setAccessibleDescription(isOpen ? QStringLiteral("Shown") : QStringLiteral("Folded"));
  if (count == count_) return;
  count_ = count;
  updateGeometry();
  update();
}

QSize FoldCaption::sizeHint() const {
  const QFontMetrics title(titleFontOfGroup());
  return {arrowSize + afterArrow + title.horizontalAdvance(text()) + captionCountGap +
              QFontMetrics(countFont()).horizontalAdvance(count_),
          title.height()};
}

void FoldCaption::paintEvent(QPaintEvent* /*event*/) {
  const Theme& t = theme();
  QPainter painter(this);
  const QRectF chevron(0, 0, arrowSize, height());
  drawFoldChevron(painter, *this, visualRect(*this, chevron).center(), isChecked());
  QRect room = rect().adjusted(arrowSize + afterArrow, 0, 0, 0);
  painter.setFont(titleFontOfGroup());
  painter.setPen(t.ink2);
  painter.drawText(visualRect(*this, room), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                   text());
  room.setLeft(room.left() + QFontMetrics(titleFontOfGroup()).horizontalAdvance(text()) +
               captionCountGap);
  painter.setFont(countFont());
  painter.drawText(visualRect(*this, room), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                   count_);
}

}  // namespace quorvane
