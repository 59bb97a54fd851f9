#include "ui/presets/preset_scroll.h"

#include <QCoreApplication>
#include <QEvent>
#include <QLayout>
#include <QScrollBar>
#include <QVBoxLayout>

#include "ui/kit/metrics.h"

namespace quorvane {
namespace {

constexpr int presetGroupGap = 10;
constexpr int revealMargin = 30;  // rows above and below a revealed one show a little

}  // namespace

PresetScroll::PresetScroll(const std::vector<QWidget*>& groups, QWidget* parent)
    : QScrollArea(parent), column_(new QVBoxLayout) {
  column_->setSpacing(presetGroupGap);
  for (QWidget* const group : groups) {
    group->setMaximumWidth(Metrics::contentWidth - 2 * Metrics::pageInset);
    column_->addWidget(group);
  }
  column_->addStretch();
  auto* const content = new QWidget;
  content->setLayout(column_);
  setFrameShape(QFrame::NoFrame);
  setWidgetResizable(true);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setFocusPolicy(Qt::NoFocus);
  setWidget(content);
  connect(verticalScrollBar(), &QScrollBar::valueChanged, this, &PresetScroll::scrolled);
  connect(verticalScrollBar(), &QScrollBar::rangeChanged, this, &PresetScroll::scrolled);
}

QRect PresetScroll::visiblePart(const QWidget& widget) const {
  if (!widget.isVisible()) return {};
  const QRect view = viewport()->rect();
  return view.translated(widget.mapFrom(viewport(), QPoint())) & widget.rect();
}

void PresetScroll::layOut(const QWidget& changed) {
  for (const QWidget* part = &changed; part != widget(); part = part->parentWidget()) {
    if (QLayout* const layout = part->parentWidget()->layout()) layout->activate();
  }
  QEvent layOut(QEvent::LayoutRequest);
  QCoreApplication::sendEvent(widget(), &layOut);
}

void PresetScroll::scrollBy(int distance, const QWidget& changed) {
  if (distance == 0) return;
  layOut(changed);
  verticalScrollBar()->setValue(verticalScrollBar()->value() + distance);
}

void PresetScroll::reveal(QWidget& widget) {
  layOut(*widget.parentWidget());
  ensureWidgetVisible(&widget, 0, revealMargin);
}

void PresetScroll::resizeEvent(QResizeEvent* event) {
  const int side = Metrics::inset(*this);
  column_->setContentsMargins(side, presetGroupGap, side, presetGroupGap);
  QScrollArea::resizeEvent(event);
  emit scrolled();
}

}  // namespace quorvane
