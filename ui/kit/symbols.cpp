#include "ui/kit/symbols.h"

#include <QFile>
#include <QPainter>
#include <QPixmap>
#include <QPixmapCache>
#include <QSvgRenderer>

#include "ui/kit/device_pixels.h"

// Resources in a static library must be initialised explicitly. The macro does not work inside a
// namespace.
static void loadSymbols() { Q_INIT_RESOURCE(ui); }

namespace quorvane {
namespace {

QByteArray tinted(const QString& name, const QColor& colour) {
  loadSymbols();
  QFile file(QStringLiteral(":/symbols/%1.svg").arg(name));
  if (!file.open(QIODevice::ReadOnly)) return {};
  return file.readAll().replace("currentColor", colour.name().toLatin1());
}

// `side` in device pixels.
QPixmap symbol(const QString& name, int side, const QColor& colour) {
  const QString key = QStringLiteral("symbol/%1/%2/%3").arg(name).arg(side).arg(colour.name());
  QPixmap pixmap;
  if (QPixmapCache::find(key, &pixmap)) return pixmap;
  pixmap = QPixmap(side, side);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  QSvgRenderer(tinted(name, colour)).render(&painter);
  painter.end();
  QPixmapCache::insert(key, pixmap);
  return pixmap;
}

}  // namespace

void drawSymbol(QPainter& painter, const QPointF& place, const QString& name, int size,
                const QColor& colour) {
  const DevicePixels pixels(painter);
  const QRectF box = pixels.placed({place, QSizeF(size, size)});
  const int side = qRound(box.width() / pixels.one());
  painter.drawPixmap(box, symbol(name, side, colour), QRectF(0, 0, side, side));
}

}  // namespace quorvane
