#include "ui/shell/drop_frame.h"

#include <QEvent>
#include <QFontMetrics>
#include <QMimeData>
#include <QPainter>
#include <QUrl>

#include "ui/kit/metrics.h"
#include "ui/kit/painting.h"
#include "ui/kit/theme.h"

namespace quorvane {
namespace {

constexpr int frameInset = 8;
constexpr int frameWidth = 2;
constexpr int plateHeight = 44;
constexpr int platePadding = 20;

// "Add the presets in wet.quorvane to your own".
QString offerText(const QList<QUrl>& files) {
  const QString what =
      files.size() == 1 ? files.front().fileName() : QStringLiteral("%1 files").arg(files.size());
  return QStringLiteral("Add the presets in %1 to your own").arg(what);
}

}  // namespace

DropFrame::DropFrame(QWidget* content) : QWidget(content) {
  setObjectName(QStringLiteral("dropFrame"));
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setFocusPolicy(Qt::NoFocus);
  content->installEventFilter(this);
  hide();
}

bool DropFrame::offer(const QMimeData& dragged) {
  if (!dragged.hasUrls()) return false;
  setAccessibleName(offerText(dragged.urls()));
  setGeometry(parentWidget()->rect());
  raise();
  show();
  update();
  return true;
}

bool DropFrame::eventFilter(QObject* /*watched*/, QEvent* event) {
  if (event->type() == QEvent::Resize) setGeometry(parentWidget()->rect());
  return false;
}

void DropFrame::paintEvent(QPaintEvent* /*event*/) {
  const Theme& t = theme();
  QPainter painter(this);
  const QRect frame = rect().adjusted(frameInset, frameInset, -frameInset, -frameInset);
  for (int i = 0; i < frameWidth; ++i) {
    drawBox(painter, frame.adjusted(i, i, -i, -i), Metrics::cardRadius, QColor(), t.signal);
  }
  painter.setFont(Metrics::font(Metrics::Type::value));
  const QFontMetrics metrics(painter.font());
  const QString words =
      metrics.elidedText(accessibleName(), Qt::ElideMiddle, frame.width() - 4 * platePadding);
  QRect plate(0, 0, metrics.horizontalAdvance(words) + 2 * platePadding,
              Metrics::atLeast(plateHeight, painter.font()));
  plate.moveCenter(rect().center());
  drawBox(painter, plate, Metrics::cardRadius, t.tint, t.signal);
  painter.setPen(t.ink);
  painter.drawText(plate, Qt::AlignCenter, words);
}

}  // namespace quorvane
