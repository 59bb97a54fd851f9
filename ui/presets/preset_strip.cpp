#include "ui/presets/preset_strip.h"

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <utility>

#include "app/staging.h"
#include "ui/kit/device_pixels.h"
#include "ui/kit/metrics.h"
#include "ui/kit/painting.h"
#include "ui/kit/text.h"
#include "ui/kit/theme.h"
#include "ui/model/menu_text.h"
#include "ui/presets/preset_text.h"

namespace quorvane {
namespace {

constexpr int widestCell = 37;
constexpr int narrowestCell = 32;
constexpr int barHeight = 3;
constexpr int barGap = 2;
constexpr int lineGap = 6;

QFont codeFont() { return Metrics::font(Metrics::Type::fixed); }
QFont valueFont(bool isStrong) {
  return Metrics::font(isStrong ? Metrics::Type::caption : Metrics::Type::callout);
}

int cellHeight(bool hasCode) {
  return (hasCode ? QFontMetrics(codeFont()).height() : 0) +
         QFontMetrics(valueFont(true)).height() + barGap + barHeight;
}

}  // namespace

PresetStrip::PresetStrip(const TuningPreset& preset, const std::optional<FanatecProduct>& product,
                         QWidget* parent)
    : QWidget(parent), product_(product) {
  for (const TuningParameter parameter : TuningParameter::adjustable(product)) {
    Cell cell{text(parameter.code()), {}, {}, {}, {}};
    if (const auto value = preset.value(parameter)) {
      const ParameterValue pair{parameter, *value};
      cell.value = text(presetValue(pair, product));
      cell.place = placeInRange(parameter, *value, product);
      cell.wanted = pair;
    }
    cells_.push_back(std::move(cell));
  }
  setAccessibleName(text(presetSummary(preset, product)));
  QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  policy.setHeightForWidth(true);
  setSizePolicy(policy);
}

void PresetStrip::compare(const std::optional<TuningSnapshot>& menu) {
  for (Cell& cell : cells_) {
    if (!cell.wanted) continue;
    const auto isOnBase =
        menu ? std::optional(isCurrentValue(*cell.wanted, menu, product_)) : std::nullopt;
    if (std::exchange(cell.isOnBase, isOnBase) != isOnBase) update();
  }
}

int StripColumns::perLine() const {
  return std::clamp((width + gap) / (narrowestCell + gap), 1, std::max(1, count));
}

int StripColumns::pitch() const { return std::min(widestCell + gap, (width + gap) / perLine()); }

int StripColumns::lines() const { return std::max(1, (count + perLine() - 1) / perLine()); }

int PresetStrip::narrowestLine() const {
  return static_cast<int>(cells_.size()) * (narrowestCell + StripColumns::gap) - StripColumns::gap;
}

int PresetStrip::heightForWidth(int width) const {
  const int lines = columns(width).lines();
  return lines * cellHeight(lines > 1) + (lines - 1) * lineGap;
}

QSize PresetStrip::sizeHint() const {
  const int width =
      static_cast<int>(cells_.size()) * (widestCell + StripColumns::gap) - StripColumns::gap;
  return {width, cellHeight(false)};
}

QSize PresetStrip::minimumSizeHint() const { return {narrowestCell, cellHeight(false)}; }

void PresetStrip::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const StripColumns grid = columns(width());
  const int height = cellHeight(grid.lines() > 1);
  for (std::size_t i = 0; i < cells_.size(); ++i) {
    const int column = static_cast<int>(i) % grid.perLine();
    const int line = static_cast<int>(i) / grid.perLine();
    paint(painter, cells_[i],
          QRect(column * grid.pitch(), line * (height + lineGap), grid.pitch() - StripColumns::gap,
                height));
  }
}

void PresetStrip::paint(QPainter& painter, const Cell& cell, const QRect& rect) const {
  const Theme& t = theme();
  const bool isSet = !cell.value.isEmpty();
  const bool isQuiet = cell.isOnBase.value_or(!isSet);
  int top = rect.top();
  if (columns(width()).lines() > 1) {
    painter.setFont(codeFont());
    painter.setPen(isSet ? t.ink2 : t.quiet);
    painter.drawText(rect.left(), top + QFontMetrics(codeFont()).ascent(), cell.code);
    top += QFontMetrics(codeFont()).height();
  }
  const QFont font = valueFont(!isQuiet && cell.isOnBase);
  const QFontMetrics values(font);
  painter.setFont(font);
  painter.setPen(isQuiet ? t.quiet : t.ink);
  const QString value =
      isSet ? values.elidedText(cell.value, Qt::ElideRight, rect.width() + StripColumns::gap - 1)
            : QStringLiteral("·");
  painter.drawText(rect.left(), top + values.ascent(), value);
  paintBar(painter, cell, rect);
}

void PresetStrip::paintBar(QPainter& painter, const Cell& cell, const QRect& rect) const {
  if (!cell.place) return;
  const Theme& t = theme();
  const qreal top = rect.bottom() + 1 - barHeight;
  const DevicePixels pixels(painter);
  drawBox(painter, pixels.placed(QRectF(rect.left(), top + 1, rect.width(), 1)), 0, t.divider,
          QColor());
  const auto filled = static_cast<qreal>(std::lround(*cell.place * rect.width()));
  if (filled <= 0) return;
  const QRectF bar = pixels.placed(QRectF(rect.left(), top, filled, barHeight));
  drawBox(painter, bar, bar.height() / 2, cell.isOnBase.value_or(false) ? t.graduation : t.fill,
          QColor());
}

}  // namespace quorvane
