#include "ui/presets/change_table.h"

#include <QPainter>
#include <algorithm>

#include "presets/setting_value.h"
#include "protocol/menu_text.h"
#include "ui/kit/metrics.h"
#include "ui/kit/mirroring.h"
#include "ui/kit/painting.h"
#include "ui/kit/text.h"
#include "ui/kit/theme.h"

namespace quorvane {
namespace {

constexpr int changePadding = 7;
constexpr int codeColumn = 46;
constexpr int arrowColumn = 24;

QFont changeFont() { return Metrics::font(Metrics::Type::body); }

int changeHeight() { return QFontMetrics(changeFont()).height() + 2 * changePadding; }

}  // namespace

ChangeTable::ChangeTable(QWidget* parent) : QWidget(parent) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

std::size_t ChangeTable::show(const TuningPreset& preset, const std::optional<TuningSnapshot>& menu,
                              const std::optional<FanatecProduct>& product) {
  rows_.clear();
  std::size_t same = 0;
  QStringList words;
  for (const ParameterValue& value : preset.applicable(product)) {
    if (menu &&
        isSameValue(value.parameter, value.value, menu->value(value.parameter, product), product)) {
      ++same;
      continue;
    }
    const auto shown = [&](std::int64_t number) {
      return text(MenuText::shortText(value.parameter, number, product));
    };
    rows_.push_back({text(value.parameter.code()), text(value.parameter.title()),
                     menu ? shown(menu->value(value.parameter, product)) : QString(),
                     shown(value.value)});
    words += QStringLiteral("%1 %2").arg(rows_.back().title, rows_.back().then);
  }
  setAccessibleName(words.join(QStringLiteral(", ")));
  updateGeometry();
  update();
  return same;
}

QSize ChangeTable::sizeHint() const { return {0, static_cast<int>(rows_.size()) * changeHeight()}; }

int ChangeTable::widest(QString Row::*text) const {
  const QFontMetrics metrics(Metrics::font(Metrics::Type::value));
  int widest = 0;
  for (const Row& row : rows_) widest = std::max(widest, metrics.horizontalAdvance(row.*text));
  return widest;
}

// `rect` is reckoned from left to right.
void ChangeTable::write(QPainter& painter, const QRect& rect, Qt::Alignment alignment,
                        const QString& words) const {
  painter.drawText(visualRect(*this, rect),
                   lineFlags(words, alignment | Qt::AlignVCenter, layoutDirection()), words);
}

void ChangeTable::paintRow(QPainter& painter, const Row& row, QRect rect) const {
  const Theme& t = theme();
  const int then = widest(&Row::then);
  const int now = widest(&Row::now);
  rect.adjust(Metrics::cardInset, 0, -Metrics::cardInset, 0);
  painter.setFont(Metrics::font(Metrics::Type::fixed));
  painter.setPen(t.ink2);
  write(painter, rect, Qt::AlignLeft, row.code);
  painter.setFont(Metrics::font(Metrics::Type::value));
  painter.setPen(t.ink);
  write(painter, QRect(rect.right() - then, rect.top(), then + 1, rect.height()), Qt::AlignLeft,
        row.then);
  painter.setFont(changeFont());
  QRect before = rect;
  before.setRight(rect.right() - then);
  if (!row.now.isEmpty()) {
    painter.setPen(t.ink2);
    const bool isMirrored = layoutDirection() == Qt::RightToLeft;
    write(painter, before.adjusted(before.width() - arrowColumn, 0, 0, 0), Qt::AlignHCenter,
          isMirrored ? QStringLiteral("←") : QStringLiteral("→"));
    before.setRight(before.right() - arrowColumn);
    write(painter, before, Qt::AlignRight, row.now);
    before.setRight(before.right() - now - Metrics::gap);
  }
  before.setLeft(before.left() + codeColumn);
  painter.setPen(t.ink);
  write(painter, before, Qt::AlignLeft,
        QFontMetrics(changeFont()).elidedText(row.title, Qt::ElideRight, before.width()));
}

void ChangeTable::paintEvent(QPaintEvent* /*event*/) {
  if (rows_.empty()) return;
  const Theme& t = theme();
  QPainter painter(this);
  drawBox(painter, rect(), Metrics::cardRadius, t.surface, t.line);
  QRect row(0, 0, width(), changeHeight());
  for (const Row& each : rows_) {
    if (row.top() > 0) drawEdge(painter, row.adjusted(1, 0, -1, 0), Qt::TopEdge, t.hairline);
    paintRow(painter, each, row);
    row.translate(0, row.height());
  }
}

}  // namespace quorvane
