#include "ui/compare/last_menu.h"

#include "app/messages.h"
#include "ui/kit/text.h"
#include "ui/model/time_text.h"

namespace quorvane {

LastMenu::LastMenu(const AppModel& model, QObject* parent) : QObject(parent), model_(model) {
  connect(&model, &AppModel::changed, this, &LastMenu::follow);
  follow();
}

void LastMenu::follow() {
  if (!model_.isConnected()) return;
  if (menu_ == model_.tuning() && product_ == model_.product()) return;
  menu_ = model_.tuning();
  product_ = model_.product();
  readAt_ = WallClock::now();
}

TuningPreset::Values LastMenu::values() const {
  return menu_ ? TuningPreset::capture(product_, {}, *menu_).values : TuningPreset::Values{};
}

QString LastMenu::name() const {
  if (model_.isConnected() && menu_) {
    return QStringLiteral("On the base now, set %1").arg(text(menu_->setName()));
  }
  if (menu_) return QStringLiteral("Last read %1").arg(shortTimeText(readAt_));
  return QString::fromUtf8(Messages::notConnected);
}

}  // namespace quorvane
