#include "ui/symbols.h"

#include <QFile>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

// The symbols are linked in with a static library, which has to ask for them; a macro that knows no
// namespaces.
static void loadSymbols() { Q_INIT_RESOURCE(ui); }

namespace quorvane {
namespace {

QByteArray tinted(const QString& name, const QColor& colour) {
  loadSymbols();
  QFile file(QStringLiteral(":/symbols/%1.svg").arg(name));
  if (!file.open(QIODevice::ReadOnly)) return {};
  return file.readAll().replace("currentColor", colour.name().toLatin1());
}

}  // namespace

QPixmap symbol(const QString& name, int size, const QColor& colour, qreal devicePixelRatio) {
  const QString key = QStringLiteral("symbol/%1/%2/%3/%4")
                          .arg(name)
                          .arg(size)
                          .arg(colour.name())
                          .arg(devicePixelRatio);
  QPixmap pixmap;
  if (QPixmapCache::find(key, &pixmap)) return pixmap;
  pixmap = QPixmap(QSize(size, size) * devicePixelRatio);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  QSvgRenderer(tinted(name, colour)).render(&painter);
  painter.end();
  pixmap.setDevicePixelRatio(devicePixelRatio);
  QPixmapCache::insert(key, pixmap);
  return pixmap;
}

}  // namespace quorvane
