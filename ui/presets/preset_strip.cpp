#include "ui/presets/preset_strip.h"

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <utility>

#include "presets/setting_value.h"
#include "ui/kit/device_pixels.h"
#include "ui/kit/metrics.h"
#include "ui/kit/mirroring.h"
#include "ui/kit/painting.h"
#include "ui/kit/text.h"
#include "ui/kit/theme.h"
#include "ui/model/menu_text.h"
#include "ui/presets/preset_text.h"
#include "ui/presets/value_texts.h"

namespace quorvane {
namespace {

constexpr int barHeight = 3;
constexpr int barGap = 2;
constexpr int lineGap = 6;
constexpr int hitPadding = 2;
constexpr int hitCornerOfValue = 2;

QFont codeFont() { return Metrics::font(Metrics::Type::fixed); }

int cellHeight(bool hasCode, bool isCompact) {
  const int value = QFontMetrics(Metrics::font(Metrics::Type::caption)).height();
  if (isCompact) return value;
  return (hasCode ? QFontMetrics(codeFont()).height() : 0) + value + barGap + barHeight;
}

}  // namespace

PresetStrip::PresetStrip(const TuningPreset& preset, const PresetForm& form,
                         std::shared_ptr<ValueTexts> texts, QWidget* parent)
    : QWidget(parent),
      product_(form.product),
      isCompact_(form.isCompact),
      words_(form.words),
      texts_(std::move(texts)) {
  for (const TuningParameter parameter : TuningParameter::adjustable(product_)) {
    Cell cell{parameter, text(parameter.code()), {}, {}, {}, {}};
    if (const auto value = preset.value(parameter)) {
      const ParameterValue pair{parameter, *value};
      cell.value = text(presetValue(pair, product_));
      cell.place = placeInRange(parameter, *value, product_);
      cell.wanted = pair;
    }
    cells_.push_back(std::move(cell));
  }
  setAccessibleName(text(presetSummary(preset, product_)));
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
  const int width = StripColumns::narrowestLine(words_, count, isCompact_);
  return {width, heightForWidth(width)};
}

QSize PresetStrip::minimumSizeHint() const { return {0, cellHeight(false, isCompact_)}; }

QRect PresetStrip::cellRect(const StripColumns& grid, std::size_t number) const {
  const int height = cellHeight(grid.lines() > 1, isCompact_);
  const int column = static_cast<int>(number) % grid.perLine();
  const int line = static_cast<int>(number) / grid.perLine();
  return visualRect(
      *this, QRect(grid.left(column), line * (height + lineGap), grid.cellWidth(column), height));
}

void PresetStrip::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const StripColumns grid = columns(width());
  const bool hasCodes = grid.lines() > 1;
  for (std::size_t i = 0; i < cells_.size(); ++i) {
    QRect rect = cellRect(grid, i);
    paintBar(painter, cells_[i], rect);
    if (hasCodes) {
      paintCode(painter, cells_[i], rect);
      rect.setTop(rect.top() + QFontMetrics(codeFont()).height());
    }
    paintValue(painter, cells_[i], rect);
  }
}

void PresetStrip::paintCode(QPainter& painter, const Cell& cell, const QRect& rect) const {
  painter.setFont(codeFont());
  painter.setPen(cell.value.isEmpty() ? theme().quiet : theme().ink2);
  painter.drawText(rect, lineFlags(cell.code, Qt::AlignLeft, layoutDirection()) | Qt::TextDontClip,
                   cell.code);
}

void PresetStrip::paintValue(QPainter& painter, const Cell& cell, const QRect& rect) const {
  const Theme& t = theme();
  const bool isSet = !cell.value.isEmpty();
  const bool isQuiet = cell.isOnBase.value_or(!isSet);
  const bool isStrong = !isQuiet && cell.isOnBase;
  const int room = rect.width() + (isCompact_ ? StripColumns::compactGap : StripColumns::gap) - 1;
  const QFont& font = texts_->font(isStrong);
  const QString word = isSet ? cell.value : QStringLiteral("·");
  const ValueTexts::Value* value = &texts_->of(word, isStrong);
  if (value->width > room) {
    value = &texts_->of(QFontMetrics(font).elidedText(word, Qt::ElideRight, room), isStrong);
  }
  const QRect place = firstPart(QRect(rect.topLeft(), QSize(rect.width(), texts_->height())),
                                value->width, layoutDirection());
  if (cell.isHit && isSet) {
    drawBox(painter, place.adjusted(-hitPadding, 0, hitPadding, 0), hitCornerOfValue, t.selection,
            QColor());
  }
  painter.setFont(font);
  painter.setPen(isQuiet ? t.quiet : t.ink);
  painter.drawStaticText(place.topLeft(), value->text);
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
  const bool isMirrored = layoutDirection() == Qt::RightToLeft;
  const qreal left = isMirrored ? rect.right() + 1 - filled : rect.left();
  const QRectF bar = pixels.placed(QRectF(left, top, filled, barHeight));
  drawBox(painter, bar, bar.height() / 2, cell.isOnBase.value_or(false) ? t.graduation : t.fill,
          QColor());
}

}  // namespace quorvane
