#include "ui/kit/text_width.h"

#include <QCache>
#include <QFont>
#include <QFontMetrics>
#include <QString>
#include <utility>

namespace quorvane {
namespace {

constexpr int keptWidths = 1000;

}  // namespace

int textWidth(const QFont& font, const QString& text) {
  static QCache<std::pair<QFont, QString>, int> widths(keptWidths);
  const std::pair key(font, text);
  if (const int* const known = widths.object(key)) return *known;
  const int width = QFontMetrics(font).horizontalAdvance(text);
  widths.insert(key, new int(width));
  return width;
}

}  // namespace quorvane
