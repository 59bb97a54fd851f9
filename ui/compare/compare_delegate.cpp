#include "ui/compare/compare_delegate.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

#include "ui/compare/compare_columns.h"
#include "ui/compare/compare_model.h"
#include "ui/kit/metrics.h"
#include "ui/kit/painting.h"
#include "ui/kit/symbols.h"
#include "ui/kit/text_width.h"
#include "ui/kit/theme.h"
#include "ui/kit/tick_box.h"

namespace quorvane {
namespace {

constexpr int comparePlateMargin = 4;  // above and below
constexpr int distanceLine = 2;
constexpr int distanceFill = 4;
constexpr int distanceTick = 12;
constexpr QSize distanceCap(5, 10);
constexpr int compareUnitGap = 4;
constexpr int strongerGap = 4;
constexpr int strongerSide = 14;
constexpr int compareTextFlags = Qt::AlignVCenter | Qt::TextSingleLine;

// Draws the parts of one row. Places are reckoned from left to right and mirrored when drawn.
class ComparePainter {
 public:
  ComparePainter(QPainter& painter, const QStyleOptionViewItem& option, const CompareLine& line)
      : painter_(painter),
        option_(option),
        line_(line),
        columns_(CompareColumns::of(option.rect)) {}

  void paint() {
    const Theme& t = theme();
    painter_.fillRect(option_.rect, line_.isTicked ? t.tint : t.surface);
    drawEdge(painter_, option_.rect, Qt::BottomEdge, t.hairline);
    if (line_.isTickable) {
      drawTickBox(painter_, placed(columns_.box), line_.isTicked ? Qt::Checked : Qt::Unchecked,
                  true);
    }
    paintName();
    paintValue(columns_.left, line_.left);
    paintValue(columns_.right, line_.right);
    if (line_.distance) {
      paintChange();
    } else {
      write(columns_.words(), line_.words, Metrics::Type::callout, t.ink2);
    }
    if (line_.isStronger) paintStronger();
    const bool showsFocus = option_.widget->property(CompareDelegate::showsFocus).toBool();
    if (showsFocus && option_.state.testFlag(QStyle::State_HasFocus)) paintFocus();
  }

 private:
  // A row whose values matter is strong, the others are quiet.
  bool isStrong() const { return line_.isDifferent || line_.isTickable; }

  QRect placed(const QRect& part) const {
    return QStyle::visualRect(option_.direction, option_.rect, part);
  }

  QRectF placed(const QRectF& part) const {
    if (option_.direction == Qt::LeftToRight) return part;
    const QRectF row = option_.rect;
    return {row.left() + row.right() - part.right(), part.top(), part.width(), part.height()};
  }

  void write(const QRect& part, const QString& words, Metrics::Type type, const QColor& ink,
             Qt::Alignment alignment = Qt::AlignLeft) {
    const QFont font = Metrics::font(type);
    painter_.setFont(font);
    painter_.setPen(ink);
    painter_.drawText(
        placed(part),
        static_cast<int>(QStyle::visualAlignment(option_.direction, alignment)) | compareTextFlags,
        QFontMetrics(font).elidedText(words, Qt::ElideRight, part.width()));
  }

  void paintName() {
    const Theme& t = theme();
    const int height =
        std::min(columns_.plate.height() - 2 * comparePlateMargin,
                 QFontMetrics(Metrics::font(Metrics::Type::fixed)).height() + comparePlateMargin);
    QRect plate = columns_.plate;
    plate.setTop(plate.top() + (plate.height() - height) / 2);
    plate.setHeight(height);
    drawBox(painter_, placed(plate), Metrics::plateRadius, line_.isTicked ? t.pill : t.well,
            QColor());
    write(plate, line_.code, Metrics::Type::fixed, line_.isTicked ? t.brandText : t.ink2,
          Qt::AlignHCenter);
    write(columns_.title, line_.title, Metrics::Type::body, isStrong() ? t.ink : t.ink2);
  }

  void paintValue(const QRect& part, const CompareValue& value) {
    const Theme& t = theme();
    const auto type = isStrong() ? Metrics::Type::value : Metrics::Type::body;
    // The unit stays behind the number from right to left, too.
    const bool isMirrored = option_.direction == Qt::RightToLeft && !value.unit.isEmpty();
    const QString& first = isMirrored ? value.unit : value.number;
    const auto firstType = isMirrored ? Metrics::Type::unit : type;
    const int rest = textWidth(Metrics::font(firstType), first) + compareUnitGap;
    write(part.adjusted(isMirrored ? rest : 0, 0, 0, 0), value.number, type,
          isStrong() ? t.ink : t.ink2);
    write(part.adjusted(isMirrored ? 0 : rest, 0, 0, 0), value.unit, Metrics::Type::unit, t.ink2);
  }

  // The number, and the way from the left value (a tick) to the right one (a cap).
  void paintChange() {
    const Theme& t = theme();
    // The sign stays before the digits from right to left, too.
    const Qt::LayoutDirection usual = painter_.layoutDirection();
    painter_.setLayoutDirection(Qt::LeftToRight);
    write(columns_.number, line_.number, Metrics::Type::value, t.ink, Qt::AlignRight);
    painter_.setLayoutDirection(usual);
    const QRectF room = columns_.distance;
    const qreal middle = room.center().y();
    const auto at = [&](double place) { return room.left() + place * room.width(); };
    const auto bar = [&](qreal from, qreal to, int thickness, const QColor& colour) {
      drawBar(painter_, placed(QRectF(from, middle - thickness / 2.0, to - from, thickness)),
              colour);
    };
    const QColor way = line_.isTicked ? t.signal : t.fill;
    const qreal from = at(line_.distance->from);
    const qreal to = at(line_.distance->to);
    bar(room.left(), room.right(), distanceLine, t.track);
    bar(std::min(from, to), std::max(from, to), distanceFill, way);
    bar(from - 1, from + 1, distanceTick, t.ink);
    const QRectF cap(to - distanceCap.width() / 2.0, middle - distanceCap.height() / 2.0,
                     distanceCap.width(), distanceCap.height());
    drawBox(painter_, placed(cap), 1, way, QColor());
  }

  void paintStronger() {
    const QRect& part = columns_.mark;
    const QRect symbol(part.left(), part.top() + (part.height() - strongerSide) / 2, strongerSide,
                       strongerSide);
    drawSymbol(painter_, placed(symbol).topLeft(), QStringLiteral("exclamationmark.triangle.fill"),
               strongerSide, theme().warningIcon);
    write(part.adjusted(strongerSide + strongerGap, 0, 0, 0), QStringLiteral("stronger"),
          Metrics::Type::callout, theme().ink);
  }

  void paintFocus() {
    for (const Qt::Edge edge : {Qt::TopEdge, Qt::BottomEdge, Qt::LeftEdge, Qt::RightEdge}) {
      drawEdge(painter_, option_.rect, edge, theme().ring, Metrics::ringWidth);
    }
  }

  QPainter& painter_;
  const QStyleOptionViewItem& option_;
  const CompareLine& line_;
  const CompareColumns columns_;
};

}  // namespace

QSize CompareDelegate::sizeHint(const QStyleOptionViewItem& /*option*/,
                                const QModelIndex& /*index*/) const {
  return {0, CompareColumns::rowHeight()};
}

void CompareDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const {
  ComparePainter(*painter, option, static_cast<const CompareModel&>(*index.model()).line(index))
      .paint();
}

bool CompareDelegate::editorEvent(QEvent* event, QAbstractItemModel* model,
                                  const QStyleOptionViewItem& option, const QModelIndex& index) {
  bool isToggle = false;
  if (event->type() == QEvent::KeyPress) {
    isToggle = static_cast<const QKeyEvent*>(event)->key() == Qt::Key_Space;
  } else if (event->type() == QEvent::MouseButtonRelease) {
    const auto& mouse = static_cast<const QMouseEvent&>(*event);
    const QRect box = CompareColumns::of(option.rect).box;
    const QRect target(option.rect.left(), option.rect.top(),
                       box.right() + Metrics::gap - option.rect.left(), option.rect.height());
    isToggle = mouse.button() == Qt::LeftButton &&
               QStyle::visualRect(option.direction, option.rect, target).contains(mouse.pos());
  }
  if (!isToggle || !index.flags().testFlag(Qt::ItemIsUserCheckable)) return false;
  const bool isTicked = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
  return model->setData(index, isTicked ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
}

}  // namespace quorvane
