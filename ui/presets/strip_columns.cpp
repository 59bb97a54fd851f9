#include "ui/presets/strip_columns.h"

#include <QFontMetrics>
#include <algorithm>

#include "ui/kit/metrics.h"

namespace quorvane {
namespace {

constexpr int leastCell = 32;
constexpr int usualCell = 37;
constexpr int roomyCell = 50;
constexpr int compactCell = 26;
constexpr int firstCompactCell = 34;
constexpr int intoGap = 4;  // how far a long word may reach into the gap after its cell

int boldAdvance(const QString& word) {
  return QFontMetrics(Metrics::font(Metrics::Type::caption)).horizontalAdvance(word) + 1;
}

int narrowestCell() { return std::max(leastCell, boldAdvance(QStringLiteral("AUTO")) - intoGap); }

int compactWidth(int column) {
  return column == 0 ? std::max(firstCompactCell, boldAdvance(QStringLiteral("AUTO")))
                     : std::max(compactCell, boldAdvance(QStringLiteral("100")));
}

}  // namespace

int StripColumns::narrowestLine(int count, bool isCompact) {
  if (!isCompact) return count * (narrowestCell() + gap) - gap;
  return compactWidth(0) + (count - 1) * (compactWidth(1) + compactGap);
}

int StripColumns::perLine() const {
  if (isCompact || narrowestLine(count, false) <= width) return std::max(1, count);
  const int half = (count + 1) / 2;
  if (narrowestLine(half, false) <= width) return std::max(1, half);
  return std::clamp((width + gap) / (narrowestCell() + gap), 1, std::max(1, count));
}

int StripColumns::lines() const { return std::max(1, (count + perLine() - 1) / perLine()); }

int StripColumns::widest() const {
  const int usual = std::max(usualCell, boldAdvance(QStringLiteral("AUTO")));
  return std::max(usual, std::min(roomyCell, (width + gap) / std::max(1, count) - gap));
}

int StripColumns::cellWidth(int column) const {
  if (isCompact) return compactWidth(column);
  return std::min(widest(), (width + gap) / perLine() - gap);
}

int StripColumns::left(int column) const {
  if (!isCompact) return column * (cellWidth(0) + gap);
  if (column == 0) return 0;
  return compactWidth(0) + compactGap + (column - 1) * (compactWidth(1) + compactGap);
}

int StripColumns::lineWidth() const { return left(perLine() - 1) + cellWidth(perLine() - 1); }

}  // namespace quorvane
