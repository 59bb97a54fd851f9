#include "ui/kit/dialog.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

#include "ui/kit/button.h"
#include "ui/kit/focus_ring.h"
#include "ui/kit/metrics.h"
#include "ui/kit/plain_text.h"
#include "ui/kit/theme.h"

namespace quorvane {
namespace {

constexpr int titleGap = 8;
constexpr int buttonGap = 20;

}  // namespace

Dialog::Dialog(const QString& title, QWidget* parent)
    : QDialog(parent), content_(new QVBoxLayout), buttons_(new QDialogButtonBox) {
  PlainText::setWindowTitle(*this, title);
  setAccessibleName(title);
  setWindowModality(Qt::WindowModal);
  setAttribute(Qt::WA_DeleteOnClose);
  auto* const heading = PlainText::label(title);
  heading->setObjectName(QStringLiteral("dialogTitle"));
  heading->setFont(Metrics::font(Metrics::Type::dialogTitle));
  heading->setWordWrap(true);
  connect(buttons_, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons_, &QDialogButtonBox::rejected, this, &QDialog::reject);

  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(Metrics::pageInset, Metrics::pageInset, Metrics::pageInset,
                             Metrics::pageInset);
  column->setSpacing(0);
  column->addWidget(heading);
  column->addSpacing(titleGap);
  column->addLayout(content_);
  column->addSpacing(buttonGap);
  column->addWidget(buttons_);
  new FocusRing(this);
}

void Dialog::addButton(Button* button, bool accepts) {
  buttons_->addButton(button,
                      accepts ? QDialogButtonBox::AcceptRole : QDialogButtonBox::RejectRole);
}

void Dialog::addDestructiveButton(Button* button) {
  buttons_->addButton(button, QDialogButtonBox::DestructiveRole);
}

void Dialog::paintEvent(QPaintEvent* /*event*/) {
  QPainter(this).fillRect(rect(), theme().surface);
}

}  // namespace quorvane
