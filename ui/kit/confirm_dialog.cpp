#include "ui/kit/confirm_dialog.h"

#include <QLabel>
#include <QVBoxLayout>

#include "ui/kit/plain_text.h"

namespace quorvane {
namespace {

constexpr int dialogWidth = 480;

}  // namespace

ConfirmDialog::ConfirmDialog(const QString& title, const QString& message, const QString& confirm,
                             Button::Kind kind, Default chosen, QWidget* parent)
    : Dialog(title, parent), message_(PlainText::label()) {
  setObjectName(QStringLiteral("confirmDialog"));
  message_->setObjectName(QStringLiteral("dialogMessage"));
  message_->setForegroundRole(QPalette::Dark);
  message_->setWordWrap(true);
  content().addWidget(message_);
  setMessage(message);

  auto* const yes = new Button(confirm, kind);
  yes->setObjectName(QStringLiteral("confirmButton"));
  addButton(yes, true);
  auto* const no = new Button(QStringLiteral("Cancel"));
  no->setObjectName(QStringLiteral("cancelButton"));
  addButton(no, false);
  Button* const first = chosen == Default::confirm ? yes : no;
  first->setDefault(true);
  first->setFocus();
  setFixedWidth(dialogWidth);
}

void ConfirmDialog::setMessage(const QString& message) {
  if (message == message_->text()) return;
  message_->setText(message);
  setAccessibleDescription(message);
}

}  // namespace quorvane
