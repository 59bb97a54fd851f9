#include "ui/presets/preset_strip.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "ui/kit/device_pixels.h"
#include "ui/kit/metrics.h"
#include "ui/kit/painting.h"
#include "ui/kit/text.h"
#include "ui/kit/theme.h"
#include "ui/presets/preset_text.h"

namespace quorvane {
namespace {

constexpr int widestCell = 42;
constexpr int narrowestCell = 30;
constexpr int cellGap = 8;
constexpr int barHeight = 3;
constexpr int barGap = 2;
constexpr int lineGap = 6;

QFont codeFont() { return Metrics::font(Metrics::Type::fixed); }
QFont valueFont() {
  QFont font = Metrics::font(Metrics::Type::callout);
  font.setWeight(QFont::Medium);
  return font;
}

int cellHeight() {
  return QFontMetrics(codeFont()).height() + QFontMetrics(valueFont()).height() + barGap +
         barHeight;
}

std::optional<qreal> placeOf(const ParameterValue& value,
                             const std::optional<FanatecProduct>& product) {
  if (isWord(value, product)) return std::nullopt;
  const ClosedRange range = value.parameter.amounts(product);
  const auto kept = std::clamp(value.value, range.lower, range.upper);
  return static_cast<qreal>(kept - range.lower) / static_cast<qreal>(range.upper - range.lower);
}

}  // namespace

PresetStrip::PresetStrip(const TuningPreset& preset, const std::optional<FanatecProduct>& product,
                         QWidget* parent)
    : QWidget(parent) {
  for (const TuningParameter parameter : TuningParameter::adjustable(product)) {
    Cell cell{text(parameter.code()), {}, {}};
    if (const auto value = preset.value(parameter)) {
      const ParameterValue pair{parameter, *value};
      cell.value = text(presetValue(pair, product));
      cell.place = placeOf(pair, product);
    }
    cells_.push_back(std::move(cell));
  }
  setAccessibleName(text(presetSummary(preset, product)));
  QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  policy.setHeightForWidth(true);
  setSizePolicy(policy);
}

int PresetStrip::columns(int width) const {
  return std::clamp((width + cellGap) / (narrowestCell + cellGap), 1,
                    std::max(1, static_cast<int>(cells_.size())));
}

int PresetStrip::pitch(int width) const {
  return std::min(widestCell + cellGap, (width + cellGap) / columns(width));
}

int PresetStrip::heightForWidth(int width) const {
  const int perLine = columns(width);
  const int lines = std::max(1, (static_cast<int>(cells_.size()) + perLine - 1) / perLine);
  return lines * cellHeight() + (lines - 1) * lineGap;
}

QSize PresetStrip::sizeHint() const {
  const int width = static_cast<int>(cells_.size()) * (widestCell + cellGap) - cellGap;
  return {width, cellHeight()};
}

QSize PresetStrip::minimumSizeHint() const { return {narrowestCell, cellHeight()}; }

void PresetStrip::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const int perLine = columns(width());
  for (std::size_t i = 0; i < cells_.size(); ++i) {
    const int column = static_cast<int>(i) % perLine;
    const int line = static_cast<int>(i) / perLine;
    const int across = pitch(width());
    paint(painter, cells_[i],
          QRect(column * across, line * (cellHeight() + lineGap), across - cellGap, cellHeight()));
  }
}

void PresetStrip::paint(QPainter& painter, const Cell& cell, const QRect& rect) const {
  const Theme& t = theme();
  const bool isSet = !cell.value.isEmpty();
  const QFontMetrics codes(codeFont());
  const QFontMetrics values(valueFont());
  painter.setFont(codeFont());
  painter.setPen(isSet ? t.ink2 : t.quiet);
  painter.drawText(rect.left(), rect.top() + codes.ascent(), cell.code);
  painter.setFont(valueFont());
  painter.setPen(isSet ? t.ink : t.quiet);
  const QString value =
      isSet ? values.elidedText(cell.value, Qt::ElideRight, rect.width() + cellGap - 1)
            : QStringLiteral("·");
  painter.drawText(rect.left(), rect.top() + codes.height() + values.ascent(), value);
  if (!cell.place) return;
  const QRectF bar = DevicePixels(painter).placed(
      QRectF(rect.left(), rect.bottom() + 1 - barHeight, rect.width(), barHeight));
  const qreal radius = bar.height() / 2;
  drawBox(painter, bar, radius, t.divider, QColor());
  const auto filled = static_cast<qreal>(std::lround(*cell.place * rect.width()));
  if (filled > 0) {
    drawBox(painter, QRectF(bar.topLeft(), QSizeF(filled, bar.height())), radius, t.bar, QColor());
  }
}

}  // namespace quorvane
