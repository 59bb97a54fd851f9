#include "ui/model/notice_bar.h"

#include <QAccessible>
#include <QLabel>
#include <QPainter>
#include <algorithm>

#include "ui/kit/painting.h"
#include "ui/kit/plain_text.h"
#include "ui/kit/symbols.h"
#include "ui/kit/text_link.h"
#include "ui/kit/text_width.h"
#include "ui/kit/theme.h"

namespace quorvane {
namespace {

constexpr int square = 8;
constexpr int markGap = 10;
constexpr int noticeLinkGap = 8;
constexpr int wrapMargin = 8;  // above and below a text that wraps

int wrappedHeight(const QLabel& label, int width) {
  return label.fontMetrics()
      .boundingRect(0, 0, width, QWIDGETSIZE_MAX, Qt::TextWordWrap, label.text())
      .height();
}

int widestWord(const QLabel& label) {
  int widest = 0;
  for (const QString& word : label.text().split(u' ')) {
    widest = std::max(widest, textWidth(label.font(), word));
  }
  return widest;
}

int labelAdvance(const QLabel& label) { return textWidth(label.font(), label.text()) + 1; }

}  // namespace

struct NoticeBar::Layout {
  QRect strong;
  QRect quiet;  // with the link at its end
  int buttonsMiddle = 0;
  int right = 0;
  int height = 0;
};

NoticeBar::NoticeBar(AppModel& model, const Form& form, QWidget* parent)
    : Bar(model, parent),
      form_(form),
      strong_(PlainText::label({}, this)),
      quiet_(PlainText::label({}, this)) {
  strong_->setFont(Metrics::font(Metrics::Type::value));
  strong_->setWordWrap(true);
  quiet_->setFont(Metrics::font(form.quietFont));
  if (form.quietFont == Metrics::Type::callout) quiet_->setForegroundRole(QPalette::Dark);
  quiet_->setWordWrap(true);
  quiet_->hide();
  QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
  policy.setHeightForWidth(true);
  setSizePolicy(policy);
}

QSize NoticeBar::sizeHint() const { return {0, heightForWidth(width())}; }

int NoticeBar::heightForWidth(int width) const { return layoutFor(width).height; }

void NoticeBar::announce(QLabel* label, const QString& text) {
  if (text == label->text()) return;
  label->setText(text);
  QAccessibleEvent change(label, QAccessible::NameChanged);
  QAccessible::updateAccessibility(&change);
  updateGeometry();
}

void NoticeBar::setTexts(const QString& strong, const QString& quiet) {
  announce(strong_, strong);
  announce(quiet_, quiet);
  quiet_->setVisible(!quiet.isEmpty());
  if (link_ != nullptr) link_->setVisible(!quiet.isEmpty());
}

void NoticeBar::setLink(TextLink* link) {
  link_ = link;
  link_->setParent(this);
  link_->hide();
}

void NoticeBar::addButton(QWidget* button) {
  button->setParent(this);
  buttons_.push_back(button);
}

int NoticeBar::markSize() const {
  const Mark mark = look().mark;
  if (!mark.colour.isValid()) return 0;
  return mark.symbol.isEmpty() ? square : Metrics::symbolSide();
}

int NoticeBar::linkWidth() const {
  const bool hasLink = link_ != nullptr && !quiet_->text().isEmpty();
  return hasLink ? noticeLinkGap + link_->sizeHint().width() : 0;
}

NoticeBar::Layout NoticeBar::layoutFor(int width) const {
  const int inset = Metrics::inset(*this);
  const int mark = markSize();
  const int left = inset + look().indent + mark + (mark > 0 ? markGap : 0);
  const int right = std::min(width, Metrics::contentWidth) - inset;
  int buttons = 0;
  int button = 0;
  for (const QWidget* const each : buttons_) {
    if (each->isHidden()) continue;
    buttons += each->sizeHint().width() + Metrics::gap;
    button = std::max(button, each->sizeHint().height());
  }
  const int least = form_.height - Metrics::buttonHeight + button;
  const bool hasQuiet = !quiet_->text().isEmpty();
  const int strong = labelAdvance(*strong_);
  const int quiet = labelAdvance(*quiet_) + linkWidth();

  Layout layout{{}, {}, least / 2, right, least};
  int room = right - buttons - left;
  if (strong + (hasQuiet ? form_.textGap + quiet : 0) <= room) {
    layout.strong = QRect(left, 0, hasQuiet ? strong : room, least);
    layout.quiet = QRect(left + strong + form_.textGap, 0, quiet, least);
    return layout;
  }
  const bool isAbove = std::max(widestWord(*strong_), widestWord(*quiet_) + linkWidth()) >= room;
  if (isAbove) room = std::max(0, right - left);
  const int strongHeight = wrappedHeight(*strong_, room);
  const int quietHeight = hasQuiet ? wrappedHeight(*quiet_, room - linkWidth()) : 0;
  const int texts = wrapMargin + strongHeight + quietHeight;
  layout.height = isAbove ? texts + least - wrapMargin / 2 : std::max(least, texts + wrapMargin);
  layout.buttonsMiddle = isAbove ? layout.height - least / 2 : layout.height / 2;
  const int top = isAbove ? wrapMargin : (layout.height - strongHeight - quietHeight) / 2;
  layout.strong = QRect(left, top, room, strongHeight);
  layout.quiet = QRect(left, top + strongHeight, room, quietHeight);
  return layout;
}

void NoticeBar::place() {
  const Layout layout = layoutFor(width());
  int right = layout.right;
  std::for_each(buttons_.rbegin(), buttons_.rend(), [&](QWidget* button) {
    if (button->isHidden()) return;
    const QSize size = button->sizeHint();
    const QRect rect(right - size.width(), layout.buttonsMiddle - size.height() / 2, size.width(),
                     size.height());
    button->setGeometry(visualRect(*this, rect));
    right = rect.left() - Metrics::gap;
  });
  strong_->setGeometry(visualRect(*this, layout.strong));
  QRect quiet = layout.quiet.adjusted(0, 0, -linkWidth(), 0);
  if (link_ != nullptr) quiet.setWidth(std::min(quiet.width(), labelAdvance(*quiet_)));
  quiet_->setGeometry(visualRect(*this, quiet));
  placeLink(quiet);
  update();
}

// The link follows the last word of a text in one line, and is at the end of the first line of a
// text that wraps.
void NoticeBar::placeLink(const QRect& quiet) {
  if (link_ == nullptr) return;
  const QSize size = link_->sizeHint();
  const bool isOneLine = labelAdvance(*quiet_) <= quiet.width();
  const int top = isOneLine ? quiet.center().y() + 1 - size.height() / 2 : quiet.top();
  link_->setGeometry(
      visualRect(*this, QRect(QPoint(quiet.right() + 1 + noticeLinkGap, top), size)));
}

void NoticeBar::resizeEvent(QResizeEvent* /*event*/) { place(); }

void NoticeBar::paintEvent(QPaintEvent* /*event*/) {
  const Look colours = look();
  QPainter painter(this);
  painter.fillRect(rect(), colours.ground);
  drawEdge(painter, rect(), colours.edge, colours.line);
  if (colours.mark.colour.isValid()) paintMark(painter);
}

void NoticeBar::paintMark(QPainter& painter) {
  const Look colours = look();
  const QRect line = strong_->geometry();
  const int side = markSize();
  const int first = std::min(line.height(), strong_->fontMetrics().height());
  const bool isWrapped = line.height() < height();
  const int top = isWrapped ? line.top() + (first - side) / 2 : (height() - side) / 2;
  const QRect mark =
      visualRect(*this, QRect(Metrics::inset(*this) + colours.indent, top, side, side));
  if (colours.mark.symbol.isEmpty()) {
    drawBox(painter, mark, 2, colours.mark.colour, QColor());
  } else {
    drawSymbol(painter, mark.topLeft(), colours.mark.symbol, side, colours.mark.colour);
  }
}

}  // namespace quorvane
