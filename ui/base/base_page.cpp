#include "ui/base/base_page.h"

#include <fmt/format.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QVBoxLayout>

#include "session/candidates.h"
#include "ui/base/base_list.h"
#include "ui/base/base_text.h"
#include "ui/base/check_list.h"
#include "ui/kit/button.h"
#include "ui/kit/confirm_dialog.h"
#include "ui/kit/form.h"
#include "ui/kit/tab_order.h"
#include "ui/kit/text.h"
#include "ui/model/availability.h"
#include "ui/model/time_text.h"

namespace quorvane {
namespace {

QString deviceNames(const std::vector<HIDDeviceInfo>& devices) {
  QStringList names;
  for (const HIDDeviceInfo& device : devices) names += text(device.displayName());
  return names.isEmpty() ? QStringLiteral("none") : names.join(QStringLiteral(", "));
}

FormRow* row(Card* card, const char* label, const char* objectName) {
  auto* const row = new FormRow(QString::fromUtf8(label), QString::fromLatin1(objectName));
  card->add(row);
  return row;
}

}  // namespace

BasePage::BasePage(AppModel& model, QWidget* parent)
    : View(model, parent),
      page_(new FormPage(QStringLiteral("Base"))),
      connection_(new Card(QStringLiteral("Connection"))),
      readAgain_(new Button(QStringLiteral("Read again"))),
      whyNotFound_(new Button(QStringLiteral("Why is my base not found?"))),
      checks_(new CheckList),
      bases_(new BaseList),
      identity_(new Card(QStringLiteral("Identity"))),
      menu_(new Card(QStringLiteral("Tuning menu"))) {
  setObjectName(QStringLiteral("basePage"));
  setAccessibleName(QStringLiteral("Base"));
  auto* const outer = new QVBoxLayout(this);
  outer->setContentsMargins(0, 0, 0, 0);
  outer->addWidget(page_);
  page_->centreInWideWindows();
  addConnection();
  addIdentity();
  addMenu();
  for (Card* const card : cards()) page_->add(card);
  orderControls();
  connect(bases_, &BaseList::chosen, this, &BasePage::choose);
  connect(bases_, &BaseList::rebuilt, this, &BasePage::orderControls);
}

void BasePage::addConnection() {
  status_ = row(connection_, "Status", "connectionStatus");
  devices_ = row(connection_, "Devices seen", "devicesSeen");
  readAgain_->setObjectName(QStringLiteral("baseReadAgainButton"));
  connect(readAgain_, &Button::clicked, this, [this] { model().refresh(); });
  whyNotFound_->setObjectName(QStringLiteral("whyNotFoundButton"));
  connection_->add(buttonsRow({readAgain_, whyNotFound_}));
  connect(whyNotFound_, &Button::clicked, this, [this] { model().examine(); });
  connect(checks_, &CheckList::checkAgain, this, [this] { model().examine(); });
  connect(checks_, &CheckList::copyReport, this, &BasePage::copyReport);
  connect(checks_, &CheckList::saveReport, this, [this] { model().saveReport(); });
  connect(checks_, &CheckList::rebuilt, this, &BasePage::orderControls);
}

void BasePage::addIdentity() {
  base_ = row(identity_, "Base", "baseName");
  wheel_ = row(identity_, "Steering wheel", "wheelName");
  module_ = row(identity_, "Button module", "moduleName");
  firmware_ = row(identity_, "Firmware (input report)", "firmwareVersion");
  maxRotation_ = row(identity_, "Max rotation", "maxRotation");
}

void BasePage::addMenu() {
  mode_ = row(menu_, "Mode", "baseMenuMode");
  activeSet_ = row(menu_, "Active set", "activeSet");
  lastRead_ = row(menu_, "Last read", "lastRead");
  noMenu_ = messageRow(QStringLiteral("No tuning data yet"), QStringLiteral("noTuningData"));
  menu_->add(noMenu_);
}

// In reading order.
std::vector<Card*> BasePage::cards() const {
  return {connection_, checks_, bases_, identity_, menu_};
}

void BasePage::orderControls() {
  std::vector<QWidget*> inReadingOrder;
  for (const Card* const card : cards()) {
    const std::vector<QWidget*> rows = card->rows();
    inReadingOrder.insert(inReadingOrder.end(), rows.begin(), rows.end());
  }
  chainTabOrder(inReadingOrder);
}

void BasePage::render() {
  status_->setValue(model().isConnected() ? QStringLiteral("Connected")
                                          : QStringLiteral("Not connected"));
  devices_->setValue(deviceNames(model().devices()));
  setAvailable(*readAgain_, whyNotNow(model()));
  renderTrouble();
  bases_->show(model());
  renderIdentity();
  renderMenu();
  renderQuestion();
}

void BasePage::renderTrouble() {
  whyNotFound_->setVisible(model().needsExamination());
  setAvailable(*whyNotFound_, whyWait(model()),
               QStringLiteral("Checks the way to the base, from the USB bus to its menu"));
  checks_->show(model());
}

void BasePage::renderIdentity() {
  const auto& identity = model().identity();
  base_->setValue(identity ? text(identity->baseName()) : QString());
  wheel_->setValue(identity ? text(identity->wheelName()) : QString());
  module_->setValue(identity ? text(identity->moduleName()) : QString());
  const auto version = model().firmwareVersion();
  if (version) firmware_->setValue(text(fmt::format("{} (0x{:04X})", *version, *version)));
  firmware_->setVisible(version.has_value());
  const auto product = model().product();
  if (product) maxRotation_->setValue(text(fmt::format("{}°", product->maxRotation)));
  maxRotation_->setVisible(product.has_value());
}

void BasePage::renderMenu() {
  const auto& menu = model().tuning();
  if (menu) {
    mode_->setValue(menu->isAdvancedMode() ? QStringLiteral("Advanced")
                                           : QStringLiteral("Standard"));
    activeSet_->setValue(text(menu->setName()));
    lastRead_->setValue(timeText(menu->receivedAt()));
  }
  for (FormRow* const row : {mode_, activeSet_, lastRead_}) row->setVisible(menu.has_value());
  noMenu_->setVisible(!menu);
}

// Asks first if there are unsaved changes: they are lost on a switch to another base.
void BasePage::choose(const HIDDeviceInfo& base) {
  if (model().isConnected() && !model().staged().empty()) {
    ask(base);
  } else {
    connectTo(base);
  }
}

void BasePage::ask(const HIDDeviceInfo& base) {
  if (question_) return;
  asked_ = base;
  question_ =
      new ConfirmDialog(text(switchQuestion(base)), {}, QStringLiteral("Discard and connect"),
                        Button::Kind::destructive, ConfirmDialog::Default::cancel, window());
  renderQuestion();
  connect(question_, &QDialog::accepted, this, [this, base] { connectTo(base); });
  question_->open();
}

// Updates the open question; closes it when either base has been disconnected or unplugged.
void BasePage::renderQuestion() {
  if (!question_) return;
  if (findDevice(model().devices(), *asked_) && model().isConnected() &&
      !model().staged().empty()) {
    question_->setMessage(
        text(switchCost(model().staged().size(), model().connectedName().value_or(std::string()))));
  } else {
    question_->reject();
  }
}

// Uses the current description: the base may have been plugged in again since it was shown.
void BasePage::connectTo(const HIDDeviceInfo& base) {
  if (const auto attached = findDevice(model().devices(), base)) model().connect(*attached);
}

void BasePage::copyReport() {
  if (model().examination()) QGuiApplication::clipboard()->setText(text(model().report()));
}

}  // namespace quorvane
