#include "ui/log/log_delegate.h"

#include <QPainter>
#include <QWidget>
#include <algorithm>

#include "ui/kit/metrics.h"
#include "ui/kit/painting.h"
#include "ui/kit/symbols.h"
#include "ui/kit/theme.h"
#include "ui/log/log_model.h"
#include "ui/model/time_text.h"

namespace quorvane {
namespace {

constexpr int timeGap = 16;
constexpr int gutter = 22;
constexpr int errorSymbol = 14;

int linePadding() {
  const QFontMetrics body(Metrics::font(Metrics::Type::body));
  return std::max(0, Metrics::logRowHeight - body.height()) / 2;
}

// The margin at either side of a row, whose content is centred where there is more room.
int sideOf(const QStyleOptionViewItem& option) {
  const int beyond = std::max(0, option.rect.width() - Metrics::contentWidth);
  return Metrics::inset(*option.widget) + beyond / 2;
}

}  // namespace

LogDelegate::LogDelegate(QObject* parent)
    : QStyledItemDelegate(parent), longestTime_(longestTimeText()) {}

// The place of the message in a row at the origin.
QRect LogDelegate::textBox(const QStyleOptionViewItem& option) const {
  const QFontMetrics fixed(Metrics::font(Metrics::Type::fixed));
  const int inset = sideOf(option);
  const int left = inset + fixed.horizontalAdvance(longestTime_) + timeGap + gutter;
  return {left, 0, std::max(1, option.rect.width() - left - inset), QWIDGETSIZE_MAX};
}

QSize LogDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const int width = option.rect.width();
  const QFontMetrics body(Metrics::font(Metrics::Type::body));
  const QRect box =
      body.boundingRect(textBox(option), Qt::TextWordWrap, index.data(Qt::DisplayRole).toString());
  return {width, std::max(Metrics::logRowHeight, box.height() + 2 * linePadding())};
}

void LogDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const {
  const Theme& t = theme();
  const QRect rect = option.rect;
  const bool isError = index.data(LogModel::isErrorRole).toBool();
  const bool isChosen = option.state.testFlag(QStyle::State_Selected);
  painter->fillRect(rect, isChosen ? t.selection : isError ? t.errorGround : t.surface);

  const QFont body = Metrics::font(Metrics::Type::body);
  const QFont fixed = Metrics::font(Metrics::Type::fixed);
  const QString time = index.data(LogModel::timeRole).toString();
  const int baseline = rect.top() + linePadding() + QFontMetrics(body).ascent();
  painter->setFont(fixed);
  painter->setPen(t.ink2);
  const auto placed = [&](const QRect& part) {
    return QStyle::visualRect(option.direction, rect, part);
  };
  const QFontMetrics timeMetrics(fixed);
  const QRect timeBox(rect.left() + sideOf(option), baseline - timeMetrics.ascent(),
                      timeMetrics.horizontalAdvance(longestTime_), timeMetrics.height());
  painter->drawText(placed(timeBox), Qt::AlignLeft | Qt::AlignTop | Qt::TextDontClip, time);
  const QRect box = textBox(option).translated(rect.left(), rect.top());
  if (isError) {
    const int top = rect.top() + linePadding() + (QFontMetrics(body).height() - errorSymbol) / 2;
    const QRect mark(box.left() - gutter, top, errorSymbol, errorSymbol);
    drawSymbol(*painter, placed(mark).topLeft(), QStringLiteral("exclamationmark.triangle.fill"),
               errorSymbol, t.error);
  }
  painter->setFont(body);
  painter->setPen(isError ? t.error : t.ink);
  painter->drawText(placed(box).translated(0, linePadding()),
                    Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap,
                    index.data(Qt::DisplayRole).toString());
  if (option.state.testFlag(QStyle::State_HasFocus)) {
    for (const Qt::Edge edge : {Qt::TopEdge, Qt::BottomEdge, Qt::LeftEdge, Qt::RightEdge}) {
      drawEdge(*painter, rect, edge, t.ring, Metrics::ringWidth);
    }
  }
}

}  // namespace quorvane
