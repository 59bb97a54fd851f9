#include "ui/base_page.h"

#include <fmt/format.h>

#include <QLabel>
#include <QVBoxLayout>

#include "ui/availability.h"
#include "ui/button.h"
#include "ui/form.h"
#include "ui/painting.h"
#include "ui/time_text.h"

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

BasePage::BasePage(AppModel& model, QWidget* parent) : View(model, parent) {
  setObjectName(QStringLiteral("basePage"));
  auto* const page = new FormPage(QStringLiteral("Base"));
  auto* const outer = new QVBoxLayout(this);
  outer->setContentsMargins(0, 0, 0, 0);
  outer->addWidget(page);

  auto* const connection = new Card(QStringLiteral("Connection"));
  status_ = row(connection, "Status", "connectionStatus");
  devices_ = row(connection, "Devices seen", "devicesSeen");
  readAgain_ = new Button(QStringLiteral("Read again"));
  readAgain_->setObjectName(QStringLiteral("baseReadAgainButton"));
  connect(readAgain_, &Button::clicked, this, [this] { this->model().refresh(); });
  connection->add(buttonRow(readAgain_));
  page->add(connection);

  auto* const identity = new Card(QStringLiteral("Identity"));
  base_ = row(identity, "Base", "baseName");
  wheel_ = row(identity, "Steering wheel", "wheelName");
  module_ = row(identity, "Button module", "moduleName");
  firmware_ = row(identity, "Firmware (input report)", "firmwareVersion");
  maxRotation_ = row(identity, "Max rotation", "maxRotation");
  page->add(identity);

  auto* const menu = new Card(QStringLiteral("Tuning menu"));
  mode_ = row(menu, "Mode", "baseMenuMode");
  activeSet_ = row(menu, "Active set", "activeSet");
  lastRead_ = row(menu, "Last read", "lastRead");
  noMenu_ = messageRow(QStringLiteral("No tuning data yet"), QStringLiteral("noTuningData"));
  menu->add(noMenu_);
  page->add(menu);
}

void BasePage::render() {
  status_->setValue(model().isConnected() ? QStringLiteral("Connected")
                                          : QStringLiteral("Not connected"));
  devices_->setValue(deviceNames(model().devices()));
  setAvailable(*readAgain_, whyNotNow(model()));
  renderIdentity();
  renderMenu();
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

}  // namespace quorvane
