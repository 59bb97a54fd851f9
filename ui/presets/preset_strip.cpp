#include "ui/presets/preset_strip.h"

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <utility>

#include "presets/setting_value.h"
#include "ui/kit/device_pixels.h"
#include "ui/kit/metrics.h"
#include "ui/kit/painting.h"
#include "ui/kit/text.h"
#include "ui/kit/theme.h"
#include "ui/model/menu_text.h"
#include "ui/presets/preset_text.h"

namespace quorvane {
namespace {

constexpr int barHeight = 3;
constexpr int barGap = 2;
constexpr int lineGap = 6;
constexpr int hitPadding = 2;
constexpr int hitCornerOfValue = 2;

QFont codeFont() { return Metrics::font(Metrics::Type::fixed); }
QFont valueFont(bool isStrong) {
  return Metrics::font(isStrong ? Metrics::Type::caption : Metrics::Type::callout);
}

int cellHeight(bool hasCode, bool isCompact) {
  const int value = QFontMetrics(valueFont(true)).height();
  if (isCompact) return value;
  return (hasCode ? QFontMetrics(codeFont()).height() : 0) + value + barGap + barHeight;
}

}  // namespace

PresetStrip::PresetStrip(const TuningPreset& preset, const std::optional<FanatecProduct>& product,
                         bool isCompact, QWidget* parent)
    : QWidget(parent), product_(product), isCompact_(isCompact) {
  for (const TuningParameter parameter : TuningParameter::adjustable(product)) {
    Cell cell{parameter, text(parameter.code()), {}, {}, {}, {}};
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
        menu ? std::optional(isSameValue(cell.wanted->parameter, cell.wanted->value,
                                         menu->value(cell.wanted->parameter, product_), product_))
             : std::nullopt;
    if (std::exchange(cell.isOnBase, isOnBase) != isOnBase) update();
  }
}

void PresetStrip::highlight(const std::vector<TuningParameter>& parameters) {
  for (Cell& cell : cells_) {
    const bool isHit =
        std::find(parameters.begin(), parameters.end(), cell.parameter) != parameters.end();
    if (std::exchange(cell.isHit, isHit) != isHit) update();
  }
}

int PresetStrip::heightOf(const StripColumns& columns) {
  const int lines = columns.lines();
  return lines * cellHeight(lines > 1, columns.isCompact) + (lines - 1) * lineGap;
}

int PresetStrip::heightForWidth(int width) const { return heightOf(columns(width)); }

QSize PresetStrip::sizeHint() const {
  const int count = static_cast<int>(cells_.size());
  const int width = StripColumns::narrowestLine(count, isCompact_);
  return {width, heightForWidth(width)};
}

QSize PresetStrip::minimumSizeHint() const { return {0, cellHeight(false, isCompact_)}; }

void PresetStrip::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const StripColumns grid = columns(width());
  const int height = cellHeight(grid.lines() > 1, isCompact_);
  for (std::size_t i = 0; i < cells_.size(); ++i) {
    const int column = static_cast<int>(i) % grid.perLine();
    const int line = static_cast<int>(i) / grid.perLine();
    paint(painter, cells_[i],
          QRect(grid.left(column), line * (height + lineGap), grid.cellWidth(column), height));
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
  const int room = rect.width() + (isCompact_ ? StripColumns::compactGap : StripColumns::gap) - 1;
  const QString value =
      isSet ? values.elidedText(cell.value, Qt::ElideRight, room) : QStringLiteral("·");
  if (cell.isHit && isSet) {
    const QRect ground(rect.left(), top, values.horizontalAdvance(value), values.height());
    drawBox(painter, ground.adjusted(-hitPadding, 0, hitPadding, 0), hitCornerOfValue, t.selection,
            QColor());
  }
  painter.drawText(rect.left(), top + values.ascent(), value);
  paintBar(painter, cell, rect);
}

void PresetStrip::paintBar(QPainter& painter, const Cell& cell, const QRect& rect) const {
  if (!cell.place || isCompact_) return;
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
