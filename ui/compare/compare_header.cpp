#include "ui/compare/compare_header.h"

#include <QPainter>
#include <QStyle>
#include <utility>

#include "ui/compare/compare_columns.h"
#include "ui/kit/metrics.h"
#include "ui/kit/painting.h"
#include "ui/kit/plain_text.h"
#include "ui/kit/theme.h"
#include "ui/kit/tick_box.h"

namespace quorvane {

CompareHeader::CompareHeader(QWidget* parent)
    : QWidget(parent), box_(new TickBox({}, TickBox::Kind::prominent, this)) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  box_->setObjectName(QStringLiteral("tickAllBox"));
  box_->setAccessibleName(QStringLiteral("Tick all"));
  PlainText::setToolTip(*box_, QStringLiteral("Tick all rows, or none (Ctrl+A)"));
  connect(box_, &TickBox::clicked, this, &CompareHeader::allTicked);
}

void CompareHeader::show(Qt::CheckState allTicked, bool isTickable) {
  box_->setCheckState(allTicked);
  box_->setVisible(isTickable);
}

void CompareHeader::setRowWidth(int width) {
  rowWidth_ = width;
  place();
  update();
}

QSize CompareHeader::sizeHint() const { return {0, CompareColumns::rowHeight()}; }

QRect CompareHeader::rows() const { return {0, 0, rowWidth_, height()}; }

void CompareHeader::place() {
  box_->setGeometry(visualRect(*this, CompareColumns::of(rows()).box));
}

void CompareHeader::resizeEvent(QResizeEvent* event) {
  place();
  QWidget::resizeEvent(event);
}

void CompareHeader::paintEvent(QPaintEvent* /*event*/) {
  const Theme& t = theme();
  QPainter painter(this);
  painter.fillRect(rect(), t.window);
  drawEdge(painter, rect(), Qt::TopEdge, t.line);
  drawEdge(painter, rect(), Qt::BottomEdge, t.line);
  painter.setFont(Metrics::font(Metrics::Type::caption));
  painter.setPen(t.ink2);
  const CompareColumns columns = CompareColumns::of(rows());
  QRect code = columns.plate;
  code.setRight(columns.title.left() - 1);
  for (const auto& [part, caption] : {std::pair(code, QStringLiteral("Code")),
                                      std::pair(columns.title, QStringLiteral("Setting")),
                                      std::pair(columns.left, QStringLiteral("Left")),
                                      std::pair(columns.right, QStringLiteral("Right")),
                                      std::pair(columns.words(), QStringLiteral("Change"))}) {
    painter.drawText(visualRect(*this, part),
                     static_cast<int>(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft)) |
                         Qt::AlignVCenter | Qt::TextSingleLine,
                     caption);
  }
}

}  // namespace quorvane
