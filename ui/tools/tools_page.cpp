#include "ui/tools/tools_page.h"

#include <QVBoxLayout>

#include "ui/kit/button.h"
#include "ui/kit/confirm_dialog.h"
#include "ui/kit/form.h"
#include "ui/kit/text.h"
#include "ui/model/availability.h"

namespace quorvane {

ToolsPage::ToolsPage(AppModel& model, QWidget* parent)
    : View(model, parent),
      reread_(new Button(QStringLiteral("Re-read everything"))),
      usbReset_(new Button(QStringLiteral("Reset the USB link"))),
      switchMode_(new Button(QStringLiteral("Switch standard / advanced menu"))),
      factoryReset_(new Button(QStringLiteral("Factory-reset all tuning values…"),
                               Button::Kind::destructive)),
      tuning_(new HexRow(QStringLiteral("Tuning"), QStringLiteral("tuningDump"))),
      identity_(new HexRow(QStringLiteral("Identity"), QStringLiteral("identityDump"))) {
  setObjectName(QStringLiteral("toolsPage"));
  setAccessibleName(QStringLiteral("Tools"));
  reread_->setObjectName(QStringLiteral("rereadButton"));
  usbReset_->setObjectName(QStringLiteral("usbResetButton"));
  switchMode_->setObjectName(QStringLiteral("toggleModeButton"));
  factoryReset_->setObjectName(QStringLiteral("factoryResetButton"));
  connect(reread_, &Button::clicked, this, [this] { this->model().readEverything(); });
  connect(usbReset_, &Button::clicked, this, [this] { this->model().usbReset(); });
  connect(switchMode_, &Button::clicked, this, [this] { this->model().toggleMode(); });
  connect(factoryReset_, &Button::clicked, this, &ToolsPage::askForReset);

  auto* const page = new FormPage(QStringLiteral("Tools"));
  page->centreInWideWindows();
  auto* const connection = new Card(QStringLiteral("Connection"));
  connection->add(buttonRow(reread_));
  connection->add(buttonRow(
      usbReset_, QStringLiteral("Re-enumerates the base exactly as if the cable were unplugged and "
                                "plugged back in. Use it if the base stops answering.")));
  page->add(connection);
  auto* const menu = new Card(QStringLiteral("Tuning menu"));
  menu->add(buttonRow(switchMode_));
  menu->add(
      buttonRow(factoryReset_,
                QStringLiteral(
                    "Sends the same reset the wheel performs when you hold the tuning button. "
                    "Every set goes back to defaults and the base returns to the standard menu.")));
  page->add(menu);
  auto* const raw = new Card(QStringLiteral("Raw"));
  raw->add(tuning_);
  raw->add(identity_);
  page->add(raw);
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(page);
}

// The USB reset stays available for a base that does not answer or cannot be opened.
void ToolsPage::render() {
  const QString whyNot = whyNotNow(model());
  setAvailable(*reread_, whyNot);
  setAvailable(*switchMode_, whyNot);
  setAvailable(*factoryReset_, whyNot);
  setAvailable(*usbReset_, whyWait(model()));
  tuning_->setVisible(model().tuning().has_value());
  if (model().tuning()) tuning_->setValue(text(model().tuning()->hexDump()));
  identity_->setVisible(model().identity().has_value());
  if (model().identity()) identity_->setValue(text(model().identity()->hexDump()));
  if (question_ && !model().isConnected()) question_->reject();
}

void ToolsPage::askForReset() {
  if (question_) return;
  question_ = new ConfirmDialog(
      QStringLiteral("Factory-reset every tuning value on the base?"),
      QStringLiteral("This cannot be undone. Save the sets you care about as presets first."),
      QStringLiteral("Reset everything"), Button::Kind::destructive, ConfirmDialog::Default::cancel,
      window());
  connect(question_, &QDialog::accepted, this, [this] { model().factoryReset(); });
  question_->open();
}

}  // namespace quorvane
