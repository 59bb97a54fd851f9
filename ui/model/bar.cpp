#include "ui/model/bar.h"

#include <QApplication>
#include <QVBoxLayout>
#include <algorithm>

namespace quorvane {

BarPlace::BarPlace(AppModel& model, QWidget* parent) : View(model, parent) {
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Minimum);
}

void BarPlace::add(Bar* bar) {
  bars_.push_back(bar);
  bar->hide();
  layout()->addWidget(bar);
  connect(bar, &Bar::wantedChanged, this, &BarPlace::choose);
  choose();
}

int BarPlace::roomFor() const {
  int room = 0;
  for (const Bar* const bar : bars_) {
    const bool wraps = bar->hasHeightForWidth();
    room = std::max(room, wraps ? bar->heightForWidth(width()) : bar->sizeHint().height());
  }
  return room;
}

void BarPlace::render() { choose(); }

void BarPlace::choose() {
  const auto wanted =
      std::find_if(bars_.begin(), bars_.end(), [](const Bar* bar) { return bar->isWanted(); });
  Bar* const next = wanted == bars_.end() ? nullptr : *wanted;
  if (next == shown_) return;
  const bool leavesFocus = shown_ != nullptr && shown_->isVisible() &&
                           (isFocusFree() || shown_->isAncestorOf(QApplication::focusWidget()));
  if (shown_ != nullptr) shown_->hide();
  shown_ = next;
  if (shown_ != nullptr) shown_->show();
  emit barChanged();
  if (leavesFocus) emit focusLeft();
}

}  // namespace quorvane
