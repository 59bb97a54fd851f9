#include "ui/presets/codes_bar.h"

#include <QEvent>
#include <QPainter>
#include <utility>

#include "ui/kit/metrics.h"
#include "ui/kit/mirroring.h"
#include "ui/kit/painting.h"
#include "ui/kit/text.h"
#include "ui/kit/theme.h"
#include "ui/model/menu_text.h"
#include "ui/presets/preset_text.h"

namespace quorvane {
namespace {

constexpr int barPadding = 6;

QFont barCodeFont() { return Metrics::font(Metrics::Type::fixed); }
QFont barValueFont() { return Metrics::font(Metrics::Type::caption); }
QFont titleFont() { return Metrics::font(Metrics::Type::callout); }

}  // namespace

CodesBar::CodesBar(AppModel& model, QWidget* parent)
    : View(model, parent), words_(StripWords::measured()) {
  setObjectName(QStringLiteral("presetCodes"));
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void CodesBar::follow(const Place& place) {
  if (place == place_) return;
  place_ = place;
  updateGeometry();
  update();
}

void CodesBar::changeEvent(QEvent* event) {
  if (event->type() == QEvent::FontChange) {
    words_ = StripWords::measured();
    updateGeometry();
  }
  View::changeEvent(event);
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

// The title is before or after the values where there is room, else above the codes; then it is at
// the top.
QRect CodesBar::titleRect() const {
  const int line = QFontMetrics(titleFont()).height();
  const int needed = QFontMetrics(titleFont()).horizontalAdvance(title_) + Metrics::gap;
  const int valueTop = barPadding + QFontMetrics(barCodeFont()).height();
  const int end = place_.left + columns().lineWidth();
  if (place_.left - place_.titleLeft >= needed) return {place_.titleLeft, valueTop, needed, line};
  if (place_.right - end >= needed) return {place_.right - needed, valueTop, needed, line};
  return {place_.left, barPadding, place_.right - place_.left, line};
}

QSize CodesBar::sizeHint() const {
  if (place_.width == 0 || columns().lines() > 1) return {0, 0};
  int height = 2 * barPadding + QFontMetrics(barCodeFont()).height();
  if (title_.isEmpty()) return {0, height};
  height += QFontMetrics(barValueFont()).height();
  return {0, titleRect().top() > barPadding ? height : height + titleRect().height()};
}

void CodesBar::paintEvent(QPaintEvent* /*event*/) {
  const Theme& t = theme();
  QPainter painter(this);
  painter.fillRect(rect(), t.window);
  drawEdge(painter, rect(), Qt::BottomEdge, t.line);
  int top = barPadding;
  if (!title_.isEmpty()) {
    const QRect title = titleRect();
    const bool isAtEnd = title.left() > place_.left;
    painter.setFont(titleFont());
    painter.setPen(t.quiet);
    write(painter, title, isAtEnd ? Qt::AlignRight : Qt::AlignLeft, title_);
    if (title.top() == barPadding) top += title.height();
  }
  paintCells(painter, top);
}

// All codes, then all values, since a change of the font costs more than a text.
void CodesBar::paintCells(QPainter& painter, int top) const {
  const Theme& t = theme();
  const QFont codeFont = barCodeFont();
  const QFont valueFont = barValueFont();
  const int codeHeight = QFontMetrics(codeFont).height();
  const int valueHeight = QFontMetrics(valueFont).height();
  const StripColumns grid = columns();
  const auto each = [&](int y, int height, QString Cell::*words) {
    for (std::size_t i = 0; i < cells_.size(); ++i) {
      const int column = static_cast<int>(i);
      const int width = grid.cellWidth(column) + StripColumns::gap;
      write(painter, QRect(place_.left + grid.left(column), y, width, height), Qt::AlignLeft,
            cells_[i].*words);
    }
  };
  painter.setFont(codeFont);
  painter.setPen(t.ink2);
  each(top, codeHeight, &Cell::code);
  painter.setFont(valueFont);
  painter.setPen(t.ink);
  each(top + codeHeight, valueHeight, &Cell::value);
}

// `rect` is reckoned from left to right.
void CodesBar::write(QPainter& painter, const QRect& rect, Qt::Alignment alignment,
                     const QString& words) const {
  painter.drawText(visualRect(*this, rect),
                   lineFlags(words, alignment, layoutDirection()) | Qt::TextDontClip, words);
}

}  // namespace quorvane
