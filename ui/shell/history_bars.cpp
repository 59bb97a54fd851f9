#include "ui/shell/history_bars.h"

#include "ui/history/not_as_left_bar.h"
#include "ui/history/receipt_panel.h"
#include "ui/history/saved_bar.h"
#include "ui/tuning/auto_set_warning.h"
#include "ui/tuning/save_bar.h"
#include "ui/tuning/tuning_page.h"

namespace quorvane {

HistoryBars::HistoryBars(AppModel& model, TuningPage& page, AutoSetWarning& warning,
                         SaveBar& saveBar)
    : QObject(&page),
      model_(model),
      page_(page),
      warning_(warning),
      asLeft_(new AsLeft(model, this)) {
  connect(&saveBar, &SaveBar::detailsWanted, this, &HistoryBars::showReceipt);
  connect(asLeft_, &AsLeft::compareAsked, this, &HistoryBars::compareAsked);
  connect(&model, &AppModel::changed, this, &HistoryBars::follow);
  follow();
}

void HistoryBars::follow() {
  if (savedBar_ == nullptr && model_.lastWrite()) addSavedBar();
  if (!hasNotAsLeftBars_ && !asLeft_->values().empty()) addNotAsLeftBars();
}

void HistoryBars::addSavedBar() {
  savedBar_ = new SavedBar(model_);
  page_.barsBelow().add(savedBar_);
  connect(savedBar_, &SavedBar::detailsWanted, this, &HistoryBars::showReceipt);
}

void HistoryBars::addNotAsLeftBars() {
  hasNotAsLeftBars_ = true;
  warning_.setLastLine(new NotAsLeftBar(model_, *asLeft_, NotAsLeftBar::Place::inWarning));
  page_.barsAbove().add(new NotAsLeftBar(model_, *asLeft_, NotAsLeftBar::Place::own));
}

void HistoryBars::showReceipt(QWidget* button) {
  if (receipt_ == nullptr) receipt_ = new ReceiptPanel(model_, &page_);
  receipt_->toggle(button);
}

}  // namespace quorvane
