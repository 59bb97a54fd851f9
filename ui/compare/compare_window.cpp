#include "ui/compare/compare_window.h"

#include <QPainter>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/compare/compare_view.h"
#include "ui/kit/focus_ring.h"
#include "ui/kit/plain_text.h"
#include "ui/kit/theme.h"

namespace quorvane {
namespace {

constexpr int compareWidth = 760;

}  // namespace

CompareWindow::CompareWindow(AppModel& model, const LastMenu& lastMenu, QWidget* parent)
    : QDialog(parent), view_(new CompareView(model, lastMenu)) {
  setObjectName(QStringLiteral("compareWindow"));
  PlainText::setWindowTitle(*this, QStringLiteral("Compare"));
  setAccessibleName(QStringLiteral("Compare"));
  setAttribute(Qt::WA_DeleteOnClose);
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(view_);
  new FocusRing(this);
  connect(view_, &CompareView::done, this, &QDialog::reject);
}

void CompareWindow::compare(const CompareSide& left, const CompareSide& right) {
  view_->compare(left, right);
  if (!isVisible()) {
    const QSize room = screen()->availableSize();
    const QSize wanted = view_->wantedSize();
    resize(std::min(std::max(compareWidth, wanted.width()), room.width()),
           std::min(wanted.height(), room.height()));
    show();
    view_->focusRows();
  }
  raise();
  activateWindow();
}

void CompareWindow::paintEvent(QPaintEvent* /*event*/) {
  QPainter(this).fillRect(rect(), theme().surface);
}

}  // namespace quorvane
