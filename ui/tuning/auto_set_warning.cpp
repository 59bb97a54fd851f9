#include "ui/tuning/auto_set_warning.h"

#include <QVBoxLayout>

#include "protocol/setting.h"
#include "ui/kit/warning_bar.h"

namespace quorvane {

AutoSetWarning::AutoSetWarning(AppModel& model, QWidget* parent)
    : Bar(model, parent),
      warning_(new WarningBar(
          QStringLiteral("This is the A set, Fanatec's Auto Setup."),
          QStringLiteral(
              "Games that support Auto Setup control these values, and the base reloads "
              "factory defaults at boot. Changes you save here work until the next power "
              "cycle. Use set C or an advanced set for values you want to keep."))) {
  auto* const box = new QVBoxLayout(this);
  box->setContentsMargins(0, 0, 0, 0);
  box->setSpacing(0);
  box->addWidget(warning_);
}

void AutoSetWarning::setLastLine(Bar* line) {
  lastLine_ = line;
  line->hide();
  layout()->addWidget(line);
  connect(line, &Bar::wantedChanged, this, &AutoSetWarning::render);
  render();
}

void AutoSetWarning::render() {
  if (lastLine_ == nullptr) return;
  warning_->setContinued(lastLine_->isWanted());
  lastLine_->setVisible(lastLine_->isWanted());
}

bool AutoSetWarning::isWanted() const {
  const auto& menu = model().tuning();
  return menu && !menu->isAdvancedMode() && menu->slot() == autoSet;
}

}  // namespace quorvane
