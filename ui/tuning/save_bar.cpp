#include "ui/tuning/save_bar.h"

#include <QAccessible>
#include <QLabel>
#include <QPainter>
#include <algorithm>

#include "app/messages.h"
#include "support/text.h"
#include "ui/kit/button.h"
#include "ui/kit/metrics.h"
#include "ui/kit/painting.h"
#include "ui/kit/plain_text.h"
#include "ui/kit/symbols.h"
#include "ui/kit/text.h"
#include "ui/kit/theme.h"
#include "ui/model/availability.h"

namespace quorvane {
namespace {

constexpr int square = 8;
constexpr int countGap = 10;
constexpr int failureGap = 14;
constexpr int wrapMargin = 8;  // above and below a text that wraps
constexpr int progressLine = 2;

int wrappedHeight(const QLabel& label, int width) {
  return label.fontMetrics()
      .boundingRect(0, 0, width, QWIDGETSIZE_MAX, Qt::TextWordWrap, label.text())
      .height();
}

int widestWord(const QLabel& label) {
  int widest = 0;
  for (const QString& word : label.text().split(u' ')) {
    widest = std::max(widest, label.fontMetrics().horizontalAdvance(word));
  }
  return widest;
}

}  // namespace

// The texts stand before the buttons: side by side, else one below the other, else above the
// buttons.
struct SaveBar::Layout {
  QRect count;
  QRect failure;
  int buttonsMiddle = 0;
  int right = 0;
  int height = 0;
};

SaveBar::SaveBar(AppModel& model, QWidget* parent)
    : Bar(model, parent),
      count_(PlainText::label({}, this)),
      failure_(PlainText::label({}, this)),
      discard_(new Button(QStringLiteral("Discard"), Button::Kind::plain, this)),
      save_(new Button({}, Button::Kind::prominent, this)) {
  setObjectName(QStringLiteral("saveBar"));
  setAccessibleName(QStringLiteral("Unsaved changes"));
  count_->setObjectName(QStringLiteral("unsavedCount"));
  count_->setFont(Metrics::font(Metrics::Type::value));
  count_->setWordWrap(true);
  failure_->setObjectName(QStringLiteral("saveFailure"));
  failure_->setFont(Metrics::font(Metrics::Type::callout));
  failure_->setForegroundRole(QPalette::Dark);
  failure_->setWordWrap(true);
  failure_->hide();
  discard_->setObjectName(QStringLiteral("discardButton"));
  save_->setObjectName(QStringLiteral("saveButton"));
  connect(discard_, &Button::clicked, this, [this] { this->model().discardStaged(); });
  connect(save_, &Button::clicked, this, [this] { this->model().saveStaged(); });
  QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
  policy.setHeightForWidth(true);
  setSizePolicy(policy);
}

void SaveBar::focusDiscard() { discard_->setFocus(Qt::ShortcutFocusReason); }

QSize SaveBar::sizeHint() const { return {0, heightForWidth(width())}; }

int SaveBar::heightForWidth(int width) const { return layoutFor(width).height; }

bool SaveBar::isSaving() const {
  const auto& progress = model().progress();
  return progress && !progress->preset;
}

bool SaveBar::hasFailed() const {
  return !isSaving() && count(model().outcomes(), Outcome::notTaken) > 0;
}

// The number of unsaved edits or, during a save, of those written.
QString SaveBar::countText() const {
  if (isSaving()) {
    const auto& progress = model().progress();
    return QStringLiteral("Saving %1 of %2…").arg(progress->done).arg(progress->total);
  }
  return text(counted(model().staged().size(), "unsaved change"));
}

// What became of the last save, if the base did not take all of it.
QString SaveBar::failureText() const {
  if (!hasFailed()) return {};
  const std::size_t taken = count(model().outcomes(), Outcome::taken);
  const std::size_t notTaken = count(model().outcomes(), Outcome::notTaken);
  const QString told = taken == 0 ? QString() : QStringLiteral("%1 saved, ").arg(taken);
  return told + QStringLiteral("%1 not taken").arg(notTaken);
}

void SaveBar::setTextOf(QLabel* label, const QString& text) {
  if (text == label->text()) return;
  label->setText(text);
  QAccessibleEvent change(label, QAccessible::NameChanged);
  QAccessible::updateAccessibility(&change);
  updateGeometry();
}

void SaveBar::render() {
  setTextOf(count_, countText());
  setTextOf(failure_, failureText());
  failure_->setVisible(!failure_->text().isEmpty());
  save_->setText(QStringLiteral("Save to set %1").arg(text(Messages::setName(model().tuning()))));
  setAvailable(*discard_, whyWait(model()),
               QStringLiteral("Discard all unsaved changes (Ctrl+Shift+Z)"));
  setAvailable(*save_, whyWait(model()), QStringLiteral("Write the changes to the base (Ctrl+S)"));
  place();
  update();
}

int SaveBar::markSize() const { return hasFailed() ? Metrics::symbolSide() : square; }

SaveBar::Layout SaveBar::layoutFor(int width) const {
  const int inset = Metrics::inset(*this);
  const int left = inset + markSize() + countGap;
  const int right = std::min(width, Metrics::contentWidth) - inset;
  const int button = save_->sizeHint().height();
  const int buttons = discard_->sizeHint().width() + Metrics::gap + save_->sizeHint().width();
  const int least = Metrics::saveBarHeight - Metrics::buttonHeight + button;
  const bool fails = !failure_->text().isEmpty();
  const int count = count_->fontMetrics().horizontalAdvance(count_->text()) + 1;
  const int failure = failure_->fontMetrics().horizontalAdvance(failure_->text()) + 1;

  Layout layout{{}, {}, least / 2, right, least};
  int room = right - buttons - Metrics::gap - left;
  if (count + (fails ? failureGap + failure : 0) <= room) {
    layout.count = QRect(left, 0, fails ? count : room, least);
    layout.failure = QRect(left + count + failureGap, 0, failure, least);
    return layout;
  }
  const bool isAbove = std::max(widestWord(*count_), widestWord(*failure_)) >= room;
  if (isAbove) room = std::max(0, right - left);
  const int countHeight = wrappedHeight(*count_, room);
  const int failureHeight = fails ? wrappedHeight(*failure_, room) : 0;
  const int texts = wrapMargin + countHeight + failureHeight;
  layout.height = isAbove ? texts + least - wrapMargin / 2 : std::max(least, texts + wrapMargin);
  layout.buttonsMiddle = isAbove ? layout.height - least / 2 : layout.height / 2;
  const int top = isAbove ? wrapMargin : (layout.height - countHeight - failureHeight) / 2;
  layout.count = QRect(left, top, room, countHeight);
  layout.failure = QRect(left, top + countHeight, room, failureHeight);
  return layout;
}

void SaveBar::place() {
  const Layout layout = layoutFor(width());
  const auto put = [&](QWidget* widget, int right) {
    const QSize size = widget->sizeHint();
    const QRect rect(right - size.width(), layout.buttonsMiddle - size.height() / 2, size.width(),
                     size.height());
    widget->setGeometry(visualRect(*this, rect));
    return rect.left();
  };
  put(discard_, put(save_, layout.right) - Metrics::gap);
  count_->setGeometry(visualRect(*this, layout.count));
  failure_->setGeometry(visualRect(*this, layout.failure));
}

void SaveBar::resizeEvent(QResizeEvent* /*event*/) { place(); }

void SaveBar::paintEvent(QPaintEvent* /*event*/) {
  const Theme& t = theme();
  QPainter painter(this);
  painter.fillRect(rect(), t.tint);
  drawEdge(painter, rect(), Qt::TopEdge, t.tintLine);
  if (isSaving() && model().progress()->total > 0) {
    const auto& progress = model().progress();
    const qreal part = static_cast<qreal>(progress->done) / static_cast<qreal>(progress->total);
    drawEdge(painter, visualRect(*this, QRectF(0, 0, width() * part, height())), Qt::TopEdge,
             t.signal, progressLine);
  }
  const QRect line = count_->geometry();
  const int side = markSize();
  const int first = std::min(line.height(), count_->fontMetrics().height());
  const bool isWrapped = line.height() < height();
  const int top = isWrapped ? line.top() + (first - side) / 2 : (height() - side) / 2;
  const QRect mark = visualRect(*this, QRect(Metrics::inset(*this), top, side, side));
  if (hasFailed()) {
    drawSymbol(painter, mark.topLeft(), QStringLiteral("exclamationmark.triangle.fill"), side,
               t.error);
  } else {
    drawBox(painter, mark, 2, t.signal, QColor());
  }
}

}  // namespace quorvane
