#include "ui/history/history_delegate.h"

#include <QLocale>
#include <QPainter>
#include <QScopeGuard>
#include <QTime>
#include <algorithm>
#include <vector>

#include "ui/history/history_entry.h"
#include "ui/history/history_list_model.h"
#include "ui/kit/metrics.h"
#include "ui/kit/painting.h"
#include "ui/kit/theme.h"
#include "ui/model/time_text.h"

namespace quorvane {
namespace {

constexpr int entryPadding = 7;  // above and below a record
constexpr int entryTimeGap = 20;
constexpr int entryLineGap = 2;
constexpr int entryValueGap = 13;
constexpr int entryCodeGap = 4;
constexpr int entryWhoGap = 20;
constexpr int aboveCaption = 10;
constexpr int belowCaption = 6;

QFont entryFont(Metrics::Type type) { return Metrics::font(type); }

int entryLineHeight() { return QFontMetrics(entryFont(Metrics::Type::callout)).height(); }

// As wide as any time of day in a fixed font.
QString longestEntryTime() { return QLocale().toString(QTime(22, 58), QLocale::ShortFormat); }

const HistoryRecord* entryRecord(const QModelIndex& index) {
  return static_cast<const HistoryListModel&>(*index.model()).record(index);
}

// The column for the texts of a record, below the row's origin.
QRect entryColumn(int width) {
  const QFontMetrics fixed(entryFont(Metrics::Type::fixed));
  const int left = Metrics::pageInset + fixed.horizontalAdvance(longestEntryTime()) + entryTimeGap;
  return {left, entryPadding, std::max(1, width - left - Metrics::pageInset), 0};
}

// A piece of the lines below the title.
struct EntryPiece {
  QRect rect;
  QString text;
  QFont font;
  QColor colour;
};

// Places the pieces of a record's lines, from left to right.
class EntryFlow {
 public:
  explicit EntryFlow(const QRect& column) : column_(column), at_(column.topLeft()) {}

  void add(const HistoryEntry::Value& value) {
    const Theme& t = theme();
    const QFont quiet = entryFont(Metrics::Type::callout);
    const QFont strong = value.isTaken ? entryFont(Metrics::Type::caption) : quiet;
    const int code = QFontMetrics(quiet).horizontalAdvance(value.code);
    const int change = QFontMetrics(strong).horizontalAdvance(value.change) + 1;
    const int whole = code + entryCodeGap + change;
    if (at_.x() > column_.left() && at_.x() + whole > column_.right() + 1) newLine();
    put(code, value.code, quiet, value.isTaken ? t.ink2 : t.error);
    at_.rx() += entryCodeGap;
    put(change, value.change, strong, value.isTaken ? t.ink : t.error);
    at_.rx() += entryValueGap;
  }

  // A text that has lines of its own.
  void addLines(const QString& text, const QColor& colour) {
    if (text.isEmpty()) return;
    if (at_.x() > column_.left()) newLine();
    const QFont font = entryFont(Metrics::Type::callout);
    const int height =
        QFontMetrics(font)
            .boundingRect(QRect(0, 0, column_.width(), QWIDGETSIZE_MAX), Qt::TextWordWrap, text)
            .height();
    pieces_.push_back({QRect(at_, QSize(column_.width(), height)), text, font, colour});
    at_.ry() += height + entryLineGap;
  }

  // Below the last line.
  int bottom() const {
    return at_.y() + (at_.x() > column_.left() ? entryLineHeight() : -entryLineGap);
  }

  const std::vector<EntryPiece>& pieces() const { return pieces_; }

 private:
  void newLine() { at_ = {column_.left(), at_.y() + entryLineHeight() + entryLineGap}; }

  void put(int width, const QString& text, const QFont& font, const QColor& colour) {
    pieces_.push_back({QRect(at_, QSize(width, entryLineHeight())), text, font, colour});
    at_.rx() += width;
  }

  const QRect column_;
  QPoint at_;
  std::vector<EntryPiece> pieces_;
};

EntryFlow entryFlow(const HistoryEntry& entry, const QRect& column) {
  const int title = QFontMetrics(entryFont(Metrics::Type::body)).height();
  EntryFlow flow(column.translated(0, title + entryLineGap));
  for (const HistoryEntry::Value& value : entry.values) flow.add(value);
  flow.addLines(entry.note, theme().ink2);
  flow.addLines(entry.trouble, theme().error);
  return flow;
}

// The alignment where the painter's direction is left to right.
int alignedIn(const QStyleOptionViewItem& option, Qt::Alignment alignment) {
  return static_cast<int>(QStyle::visualAlignment(option.direction, alignment));
}

void paintDayCaption(QPainter& painter, const QStyleOptionViewItem& option,
                     const QString& caption) {
  painter.setFont(entryFont(Metrics::Type::caption));
  painter.setPen(theme().ink2);
  const QRect room =
      option.rect.adjusted(Metrics::pageInset, aboveCaption, -Metrics::pageInset, -belowCaption);
  painter.drawText(QStyle::visualRect(option.direction, option.rect, room),
                   alignedIn(option, Qt::AlignLeft) | Qt::AlignVCenter, caption);
}

// The time, and the line with what and who.
void paintEntryHead(QPainter& painter, const QStyleOptionViewItem& option,
                    const HistoryEntry& entry, const QString& time) {
  const Theme& t = theme();
  const QFontMetrics title(entryFont(Metrics::Type::value));
  const QFontMetrics callout(entryFont(Metrics::Type::callout));
  QRect line = entryColumn(option.rect.width()).translated(option.rect.topLeft());
  line.setHeight(title.height());
  const auto draw = [&](const QRect& room, Metrics::Type type, const QColor& colour,
                        const QString& words, Qt::Alignment alignment) {
    painter.setFont(entryFont(type));
    painter.setPen(colour);
    painter.drawText(QStyle::visualRect(option.direction, option.rect, room),
                     alignedIn(option, alignment) | Qt::AlignVCenter,
                     painter.fontMetrics().elidedText(words, Qt::ElideRight, room.width()));
  };
  QRect clock = line;
  clock.setLeft(option.rect.left() + Metrics::pageInset);
  clock.setRight(line.left() - 1);
  draw(clock, Metrics::Type::fixed, t.ink2, time, Qt::AlignLeft);
  const int who = std::min(callout.horizontalAdvance(entry.who) + 1, line.width() / 2);
  draw(line.adjusted(line.width() - who, 0, 0, 0), Metrics::Type::callout, t.ink2, entry.who,
       Qt::AlignRight);
  draw(line.adjusted(0, 0, -who - entryWhoGap, 0), Metrics::Type::value, t.ink, entry.title,
       Qt::AlignLeft);
}

void paintEntryFlow(QPainter& painter, const QStyleOptionViewItem& option,
                    const HistoryEntry& entry) {
  const EntryFlow flow = entryFlow(entry, entryColumn(option.rect.width()));
  for (const EntryPiece& piece : flow.pieces()) {
    painter.setFont(piece.font);
    painter.setPen(piece.colour);
    painter.drawText(QStyle::visualRect(option.direction, option.rect,
                                        piece.rect.translated(option.rect.topLeft())),
                     Qt::TextWordWrap | alignedIn(option, Qt::AlignLeft), piece.text);
  }
}

}  // namespace

QSize HistoryDelegate::sizeHint(const QStyleOptionViewItem& option,
                                const QModelIndex& index) const {
  const int width = option.rect.width();
  const HistoryRecord* const record = entryRecord(index);
  if (record == nullptr) {
    const QFontMetrics caption(entryFont(Metrics::Type::caption));
    return {width, aboveCaption + caption.height() + belowCaption};
  }
  return {width, entryFlow(historyEntry(*record), entryColumn(width)).bottom() + entryPadding + 1};
}

void HistoryDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const {
  const Theme& t = theme();
  const HistoryRecord* const record = entryRecord(index);
  // In every layout the texts themselves are read from left to right: "3 values", "65 → 80".
  painter->save();
  const auto restore = qScopeGuard([painter] { painter->restore(); });
  painter->setLayoutDirection(Qt::LeftToRight);
  if (record == nullptr) {
    paintDayCaption(*painter, option, index.data(Qt::DisplayRole).toString());
    return;
  }
  if (option.state.testFlag(QStyle::State_Selected)) painter->fillRect(option.rect, t.selection);
  drawEdge(*painter, option.rect, Qt::BottomEdge, t.hairline);
  const HistoryEntry entry = historyEntry(*record);
  paintEntryHead(*painter, option, entry, shortTimeText(record->time));
  paintEntryFlow(*painter, option, entry);
}

}  // namespace quorvane
