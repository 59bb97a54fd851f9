#include "ui/kit/side_panel.h"

#include <QEvent>
#include <QPainter>
#include <QScrollArea>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/kit/mirroring.h"
#include "ui/kit/painting.h"
#include "ui/kit/theme.h"

namespace quorvane {
namespace {

constexpr int sidePanelWidth = 460;
constexpr int sidePanelLines = 27;  // the least width, as a multiple of the font's height
constexpr int sidePanelInset = 24;

}  // namespace

SidePanel::SidePanel(QWidget* parent) : QWidget(parent), scroll_(new QScrollArea) {
  auto* const content = new QWidget;
  column_ = new QVBoxLayout(content);
  column_->setContentsMargins(sidePanelInset, sidePanelInset, sidePanelInset, sidePanelInset);
  scroll_->setFrameShape(QFrame::NoFrame);
  scroll_->setWidgetResizable(true);
  scroll_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  scroll_->setFocusPolicy(Qt::NoFocus);
  scroll_->setWidget(content);
  auto* const outer = new QVBoxLayout(this);
  outer->addWidget(scroll_);
  placeLine();
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
}

SidePanel* SidePanel::in(QWidget& widget) {
  auto* const panel = new SidePanel;
  auto* const whole = new QVBoxLayout(&widget);
  whole->setContentsMargins(0, 0, 0, 0);
  whole->addWidget(panel);
  widget.setSizePolicy(panel->sizePolicy());
  return panel;
}

QSize SidePanel::sizeHint() const {
  return {std::max(sidePanelWidth, sidePanelLines * fontMetrics().height()), 0};
}

void SidePanel::placeLine() { layout()->setContentsMargins(visualMargins(*this, {1, 0, 0, 0})); }

void SidePanel::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const bool isMirrored = layoutDirection() == Qt::RightToLeft;
  drawEdge(painter, rect(), isMirrored ? Qt::RightEdge : Qt::LeftEdge, theme().line);
}

void SidePanel::changeEvent(QEvent* event) {
  if (event->type() == QEvent::LayoutDirectionChange) placeLine();
  QWidget::changeEvent(event);
}

}  // namespace quorvane
