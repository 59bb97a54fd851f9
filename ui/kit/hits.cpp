#include "ui/kit/hits.h"

#include <QFontMetrics>

#include "ui/kit/painting.h"
#include "ui/kit/theme.h"

namespace quorvane {
namespace {

constexpr int hitCorner = 2;

}  // namespace

void drawHits(QPainter& painter, const QRect& line, const QString& text, const QStringList& words,
              const QFont& font) {
  const QFontMetrics metrics(font);
  const int top = line.top() + (line.height() - metrics.height()) / 2;
  for (const QString& word : words) {
    for (qsizetype at = text.indexOf(word, 0, Qt::CaseInsensitive); at >= 0 && !word.isEmpty();
         at = text.indexOf(word, at + word.size(), Qt::CaseInsensitive)) {
      const int left = metrics.horizontalAdvance(text.left(at));
      const int right = metrics.horizontalAdvance(text.left(at + word.size()));
      drawBox(painter, QRect(line.left() + left, top, right - left, metrics.height()), hitCorner,
              theme().selection, QColor());
    }
  }
}

}  // namespace quorvane
