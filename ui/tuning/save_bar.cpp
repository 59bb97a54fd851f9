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
#include "ui/kit/text.h"
#include "ui/kit/theme.h"
#include "ui/model/availability.h"

namespace quorvane {
namespace {

constexpr int square = 8;
constexpr int countGap = 10;

}  // namespace

SaveBar::SaveBar(AppModel& model, QWidget* parent)
    : Bar(model, parent),
      count_(PlainText::label({}, this)),
      discard_(new Button(QStringLiteral("Discard"), Button::Kind::plain, this)),
      save_(new Button({}, Button::Kind::prominent, this)) {
  setObjectName(QStringLiteral("saveBar"));
  setAccessibleName(QStringLiteral("Unsaved changes"));
  count_->setObjectName(QStringLiteral("unsavedCount"));
  count_->setFont(Metrics::font(Metrics::Type::value));
  discard_->setObjectName(QStringLiteral("discardButton"));
  save_->setObjectName(QStringLiteral("saveButton"));
  connect(discard_, &Button::clicked, this, [this] { this->model().discardStaged(); });
  connect(save_, &Button::clicked, this, [this] { this->model().saveStaged(); });
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void SaveBar::focusDiscard() { discard_->setFocus(Qt::ShortcutFocusReason); }

QSize SaveBar::sizeHint() const {
  return {0, Metrics::saveBarHeight - Metrics::buttonHeight +
                 Metrics::atLeast(Metrics::buttonHeight, font())};
}

// The number of unsaved edits or, during a save, the number of the one being written.
QString SaveBar::countText() const {
  const auto& progress = model().progress();
  if (progress && !progress->preset) {
    return QStringLiteral("Saving %1 of %2…")
        .arg(std::min(progress->done + 1, progress->total))
        .arg(progress->total);
  }
  return text(counted(model().staged().size(), "unsaved change"));
}

void SaveBar::render() {
  const QString count = countText();
  if (count != count_->text()) {
    count_->setText(count);
    QAccessibleEvent change(count_, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&change);
  }
  save_->setText(QStringLiteral("Save to set %1").arg(text(Messages::setName(model().tuning()))));
  setAvailable(*discard_, whyWait(model()),
               QStringLiteral("Discard all unsaved changes (Ctrl+Shift+Z)"));
  setAvailable(*save_, whyWait(model()), QStringLiteral("Write the changes to the base (Ctrl+S)"));
  place();
}

void SaveBar::place() {
  const int inset = Metrics::inset(*this);
  const auto put = [&](QWidget* widget, int right) {
    const QSize size = widget->sizeHint();
    const QRect place(right - size.width(), (height() - size.height()) / 2, size.width(),
                      size.height());
    widget->setGeometry(visualRect(*this, place));
    return place.left();
  };
  const int save = put(save_, std::min(width(), Metrics::contentWidth) - inset);
  const int discard = put(discard_, save - Metrics::gap);
  const int left = inset + square + countGap;
  count_->setGeometry(
      visualRect(*this, QRect(left, 0, std::max(0, discard - Metrics::gap - left), height())));
}

void SaveBar::resizeEvent(QResizeEvent* /*event*/) { place(); }

void SaveBar::paintEvent(QPaintEvent* /*event*/) {
  const Theme& t = theme();
  QPainter painter(this);
  painter.fillRect(rect(), t.tint);
  drawEdge(painter, rect(), Qt::TopEdge, t.tintLine);
  const int inset = Metrics::inset(*this);
  const QRect mark(inset, (height() - square) / 2, square, square);
  drawBox(painter, visualRect(*this, mark), 2, t.signal, QColor());
}

}  // namespace quorvane
