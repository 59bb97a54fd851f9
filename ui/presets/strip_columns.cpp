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

int narrowestCell(const StripWords& words) {
  return std::max(leastCell, words.automatic - intoGap);
}

}  // namespace

StripWords StripWords::measured() {
  const QFontMetrics metrics(Metrics::font(Metrics::Type::caption));
  return {metrics.horizontalAdvance(QStringLiteral("AUTO")) + 1,
          metrics.horizontalAdvance(QStringLiteral("100")) + 1};
}

int StripColumns::compactWidth(int column) const {
  return column == 0 ? std::max(firstCompactCell, words.automatic)
                     : std::max(compactCell, words.hundred);
}

int StripColumns::narrowestLine(const StripWords& words, int count, bool isCompact) {
  if (!isCompact) return count * (narrowestCell(words) + gap) - gap;
  const StripColumns cells{words, count, 0, true};
  return cells.left(count - 1) + cells.cellWidth(count - 1);
}

int StripColumns::perLine() const {
  if (isCompact || narrowestLine(words, count, false) <= width) return std::max(1, count);
  const int half = (count + 1) / 2;
  if (narrowestLine(words, half, false) <= width) return std::max(1, half);
  return std::clamp((width + gap) / (narrowestCell(words) + gap), 1, std::max(1, count));
}

int StripColumns::lines() const { return std::max(1, (count + perLine() - 1) / perLine()); }

int StripColumns::widest() const {
  const int usual = std::max(usualCell, words.automatic);
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
