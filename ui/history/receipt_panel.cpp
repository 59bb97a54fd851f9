#include "ui/history/receipt_panel.h"

#include <QApplication>
#include <QClipboard>
#include <QEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/kit/metrics.h"
#include "ui/kit/mirroring.h"
#include "ui/kit/painting.h"
#include "ui/kit/plain_text.h"
#include "ui/kit/text_link.h"
#include "ui/kit/theme.h"
#include "ui/model/bar.h"

namespace quorvane {
namespace {

constexpr int receiptWidth = 640;
constexpr int receiptPanelGap = 4;  // to the bar below
constexpr int receiptFootPadding = 10;
constexpr int receiptFootInset = 20;

const Bar* receiptBarOf(const QWidget* widget) {
  while (widget != nullptr && qobject_cast<const Bar*>(widget) == nullptr) {
    widget = widget->parentWidget();
  }
  return static_cast<const Bar*>(widget);
}

bool scrollsReceipt(int key) {
  return key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp ||
         key == Qt::Key_PageDown || key == Qt::Key_Home || key == Qt::Key_End;
}

}  // namespace

ReceiptPanel::ReceiptPanel(AppModel& model, QWidget* page)
    : View(model, page),
      list_(new QScrollArea),
      head_(new ReceiptRow(nullptr)),
      summary_(PlainText::label()),
      copy_(new TextLink(QStringLiteral("Copy as text"))) {
  setObjectName(QStringLiteral("receipt"));
  setAccessibleName(QStringLiteral("Receipt of the last write"));
  summary_->setObjectName(QStringLiteral("receiptSummary"));
  summary_->setFont(Metrics::font(Metrics::Type::callout));
  summary_->setForegroundRole(QPalette::Dark);
  summary_->setWordWrap(true);
  copy_->setObjectName(QStringLiteral("copyReceiptLink"));
  connect(copy_, &TextLink::clicked, this, &ReceiptPanel::copy);
  auto* const lines = new QWidget;
  rows_ = new QVBoxLayout(lines);
  rows_->setContentsMargins(0, 0, 0, 0);
  rows_->setSpacing(0);
  list_->setObjectName(QStringLiteral("receiptList"));
  list_->setFrameShape(QFrame::NoFrame);
  list_->setWidgetResizable(true);
  list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  list_->setFocusPolicy(Qt::NoFocus);
  list_->setWidget(lines);
  lines->setBackgroundRole(QPalette::Base);
  auto* const foot = new QHBoxLayout;
  foot->setContentsMargins(visualMargins(
      *this, {receiptFootInset, receiptFootPadding, receiptFootInset, receiptFootPadding}));
  foot->setSpacing(Metrics::gap);
  foot->addWidget(summary_, 1);
  foot->addWidget(copy_);
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(1, 1, 1, 1);
  column->setSpacing(0);
  column->addWidget(head_);
  column->addWidget(list_, 1);
  column->addLayout(foot);
  page->installEventFilter(this);
  hide();
}

void ReceiptPanel::toggle(QWidget* button) {
  const bool closes = isVisible() && opener_ == button;
  if (isVisible()) close();
  if (closes || !model().lastWrite()) return;
  opener_ = button;
  fill(*model().lastWrite());
  placeSelf();
  show();
  raise();
  QWidget::setTabOrder(button, copy_);
  copy_->setFocus(Qt::PopupFocusReason);
}

void ReceiptPanel::fill(const AppModel::LastWrite& write) {
  shown_ = write;
  while (QLayoutItem* const item = rows_->takeAt(0)) {
    delete item->widget();
    delete item;
  }
  const auto lines = receiptLines(write);
  columns_ = ReceiptColumns::fitting(lines);
  head_->setColumns(columns_);
  for (const ReceiptLine& line : lines) {
    auto* const row = new ReceiptRow(&line);
    row->setColumns(columns_);
    rows_->addWidget(row);
  }
  rows_->addStretch();
  summary_->setText(receiptSummary(write));
}

// At the right end of the bar, as wide as its columns need and as high as the page has room for.
void ReceiptPanel::placeSelf() {
  const QWidget* const bar = receiptBarOf(opener_);
  if (bar == nullptr) return;
  const int inset = Metrics::inset(*this);
  const int barWidth = std::min(bar->width(), Metrics::contentWidth);
  const int width = std::min(std::max(receiptWidth, columns_.width() + 2), barWidth - 2 * inset);
  ensurePolished();
  const int foot = std::max(summary_->heightForWidth(width - 2 * receiptFootInset - Metrics::gap -
                                                     copy_->sizeHint().width()),
                            copy_->sizeHint().height()) +
                   2 * receiptFootPadding;

  const int bottom = bar->mapTo(parentWidget(), QPoint()).y() - receiptPanelGap;
  const int lines = rows_->sizeHint().height();
  const int height =
      std::min(head_->sizeHint().height() + lines + foot + 2, bottom - receiptPanelGap);
  const int right = barWidth - inset;
  const QRect inBar(right - width, 0, width, 1);
  const int left = bar->mapTo(parentWidget(), visualRect(*bar, inBar).topLeft()).x();
  setGeometry(left, bottom - height, width, height);
}

void ReceiptPanel::render() {
  if (isVisible() && (model().lastWrite() != shown_ || !opener_ || !opener_->isVisible())) close();
}

void ReceiptPanel::close() {
  const bool hadFocus = isAncestorOf(QApplication::focusWidget()) || isFocusFree();
  hide();
  if (hadFocus && opener_ && opener_->isVisible()) opener_->setFocus(Qt::PopupFocusReason);
}

void ReceiptPanel::copy() const {
  if (shown_) QApplication::clipboard()->setText(receiptText(*shown_));
}

void ReceiptPanel::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    close();
  } else if (scrollsReceipt(event->key())) {
    QApplication::sendEvent(list_->verticalScrollBar(), event);
  } else {
    View::keyPressEvent(event);
  }
}

bool ReceiptPanel::eventFilter(QObject* watched, QEvent* event) {
  const bool moves = event->type() == QEvent::Resize || event->type() == QEvent::LayoutRequest;
  if (watched == parentWidget() && moves && isVisible()) placeSelf();
  return View::eventFilter(watched, event);
}

void ReceiptPanel::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  drawBox(painter, rect(), Metrics::cardRadius, theme().surface, theme().edge);
}

}  // namespace quorvane
