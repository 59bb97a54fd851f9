#include "ui/shell/close_dialog.h"

#include <QLabel>
#include <QVBoxLayout>

#include "app/messages.h"
#include "support/text.h"
#include "ui/kit/button.h"
#include "ui/kit/plain_text.h"
#include "ui/kit/text.h"
#include "ui/presets/preset_text.h"

namespace quorvane {
namespace {

constexpr int closeDialogWidth = 480;

// "3 changes are not on the base".
QString closeQuestion(const AppModel& model) {
  const std::size_t count = model.staged().size();
  return text(counted(count, "change") + (count == 1 ? " is" : " are") + " not on the base");
}

// "FF 80, NDP 15 and INT 3".
QString stagedValues(const AppModel& model) {
  QString values;
  std::size_t left = model.staged().size();
  for (const auto& [parameter, value] : model.staged()) {
    values += QStringLiteral("%1 %2").arg(text(parameter.code()),
                                          text(presetValue({parameter, value}, model.product())));
    --left;
    if (left > 0) values += left == 1 ? QStringLiteral(" and ") : QStringLiteral(", ");
  }
  return values;
}

// The consequence of each answer.
QString closeCost(const AppModel& model) {
  return QStringLiteral("Save %1 to set %2 before you quit? %3 would be lost.")
      .arg(model.staged().size() == 1 ? QStringLiteral("it") : QStringLiteral("them"),
           text(Messages::setName(model.tuning())), stagedValues(model));
}

Button* closeButton(const char* word, Button::Kind kind, const char* objectName) {
  auto* const button = new Button(QString::fromLatin1(word), kind);
  button->setObjectName(QString::fromLatin1(objectName));
  return button;
}

}  // namespace

CloseDialog::CloseDialog(const AppModel& model, QWidget* parent)
    : Dialog(closeQuestion(model), parent), model_(model), message_(PlainText::label()) {
  setObjectName(QStringLiteral("closeDialog"));
  message_->setObjectName(QStringLiteral("dialogMessage"));
  message_->setForegroundRole(QPalette::Dark);
  message_->setWordWrap(true);
  content().addWidget(message_);
  Button* const save = closeButton("Save", Button::Kind::prominent, "closeSaveButton");
  addButton(save, true);
  addButton(closeButton("Cancel", Button::Kind::plain, "closeCancelButton"), false);
  Button* const discard = closeButton("Discard", Button::Kind::destructive, "closeDiscardButton");
  addDestructiveButton(discard);
  connect(discard, &Button::clicked, this, [this] {
    reject();
    emit discarded();
  });
  save->setDefault(true);
  save->setFocus();
  setFixedWidth(closeDialogWidth);
  render();
}

void CloseDialog::render() {
  if (model_.staged().empty()) {
    reject();
    return;
  }
  message_->setText(closeCost(model_));
  setAccessibleDescription(message_->text());
}

}  // namespace quorvane
