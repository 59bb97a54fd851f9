#include "ui/presets/codes_bar.h"

#include <QPainter>
#include <algorithm>
#include <utility>

#include "ui/kit/metrics.h"
#include "ui/kit/painting.h"
#include "ui/kit/text.h"
#include "ui/kit/theme.h"
#include "ui/model/menu_text.h"
#include "ui/presets/preset_strip.h"
#include "ui/presets/preset_text.h"

namespace quorvane {
namespace {

constexpr int barPadding = 6;

QFont barCodeFont() { return Metrics::font(Metrics::Type::fixed); }
QFont barValueFont() { return Metrics::font(Metrics::Type::caption); }
QFont titleFont() { return Metrics::font(Metrics::Type::callout); }

}  // namespace

CodesBar::CodesBar(AppModel& model, QWidget* parent) : View(model, parent) {
  setObjectName(QStringLiteral("presetCodes"));
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void CodesBar::follow(int left, int width) {
  if (left == left_ && width == stripWidth_) return;
  left_ = left;
  stripWidth_ = width;
  updateGeometry();
  update();
}

void CodesBar::render() {
  const auto product = model().product();
  const auto& menu = model().tuning();
  std::vector<Cell> cells;
  QStringList values;
  for (const TuningParameter parameter : TuningParameter::adjustable(product)) {
    Cell cell{text(parameter.code()), {}};
    if (menu) {
      cell.value = text(presetValue({parameter, menu->value(parameter, product)}, product));
      values += QStringLiteral("%1 %2").arg(cell.code, cell.value);
    }
    cells.push_back(std::move(cell));
  }
  title_ = menu ? QStringLiteral("On the base now, %1").arg(shortSetName(*menu)) : QString();
  setAccessibleName(menu ? title_ : QStringLiteral("Settings"));
  setAccessibleDescription(values.join(QStringLiteral(", ")));
  const bool isOther = cells.size() != cells_.size();
  cells_ = std::move(cells);
  if (isOther) updateGeometry();
  update();
}

// The title is at the right of the values where there is room, else above the codes.
bool CodesBar::isTitleAbove() const {
  const StripColumns grid{static_cast<int>(cells_.size()), stripWidth_};
  const int right = std::min(width(), Metrics::contentWidth) - Metrics::inset(*this);
  const int needed = QFontMetrics(titleFont()).horizontalAdvance(title_) + Metrics::gap;
  return !title_.isEmpty() && left_ + grid.count * grid.pitch() + needed > right;
}

QSize CodesBar::sizeHint() const {
  const StripColumns grid{static_cast<int>(cells_.size()), stripWidth_};
  if (grid.lines() > 1) return {0, 0};
  int height = 2 * barPadding + QFontMetrics(barCodeFont()).height();
  if (!title_.isEmpty()) height += QFontMetrics(barValueFont()).height();
  if (isTitleAbove()) height += QFontMetrics(titleFont()).height();
  return {0, height};
}

void CodesBar::paintEvent(QPaintEvent* /*event*/) {
  const Theme& t = theme();
  QPainter painter(this);
  painter.fillRect(rect(), t.window);
  drawEdge(painter, rect(), Qt::BottomEdge, t.line);
  const StripColumns grid{static_cast<int>(cells_.size()), stripWidth_};
  const int right = std::min(width(), Metrics::contentWidth) - Metrics::inset(*this);
  int top = barPadding;
  painter.setFont(titleFont());
  painter.setPen(t.quiet);
  if (isTitleAbove()) {
    const int line = QFontMetrics(titleFont()).height();
    painter.drawText(QRect(left_, top, right - left_, line), Qt::TextSingleLine, title_);
    top += line;
  } else {
    painter.drawText(QRect(left_, 0, right - left_, height()),
                     Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine, title_);
  }
  const QFontMetrics codes(barCodeFont());
  int x = left_;
  for (const Cell& cell : cells_) {
    painter.setFont(barCodeFont());
    painter.setPen(t.ink2);
    painter.drawText(x, top + codes.ascent(), cell.code);
    painter.setFont(barValueFont());
    painter.setPen(t.ink);
    painter.drawText(x, top + codes.height() + QFontMetrics(barValueFont()).ascent(), cell.value);
    x += grid.pitch();
  }
}

}  // namespace quorvane
