#pragma once

#include <QFont>
#include <QPainter>
#include <QRect>
#include <QStringList>

namespace quorvane {

// Draws the ground of a search's hits below a line of text that begins at the left of `line`:
// behind each of these words in it, whatever their case.
void drawHits(QPainter& painter, const QRect& line, const QString& text, const QStringList& words,
              const QFont& font);

}  // namespace quorvane
