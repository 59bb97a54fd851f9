#include "ui/presets_page.h"

#include <QApplication>
#include <QLabel>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "ui/availability.h"
#include "ui/confirm_dialog.h"
#include "ui/form.h"
#include "ui/metrics.h"
#include "ui/painting.h"
#include "ui/preset_row.h"
#include "ui/preset_text.h"
#include "ui/save_preset_bar.h"
#include "ui/tab_order.h"

namespace quorvane {
namespace {

constexpr int cardGap = 10;

QString progressText(const AppModel& model, const TuningPreset& preset) {
  const auto& progress = model.progress();
  if (!progress || progress->preset != preset.id) return {};
  return QStringLiteral("%1 of %2").arg(progress->done).arg(progress->total);
}

QString whyNotApply(const AppModel& model) {
  if (model.isConnected() && !model.busy() && !model.tuning()) {
    return QStringLiteral("The base has not told its menu yet");
  }
  return whyNotNow(model);
}

}  // namespace

PresetsPage::PresetsPage(AppModel& model, QWidget* parent)
    : View(model, parent),
      page_(new FormPage(QStringLiteral("Presets"), Metrics::contentWidth - 2 * Metrics::pageInset,
                         cardGap)),
      builtIn_(new Card(QStringLiteral("Built in"))),
      mine_(new Card(QStringLiteral("Mine"))),
      hint_(messageRow(QStringLiteral("Save the current menu below to create your first preset."),
                       QStringLiteral("noPresetsHint"))),
      saveBar_(new SavePresetBar(model)) {
  setObjectName(QStringLiteral("presetsPage"));
  setAccessibleName(QStringLiteral("Presets"));
  builtIn_->setObjectName(QStringLiteral("builtInPresets"));
  mine_->setObjectName(QStringLiteral("minePresets"));
  mine_->add(hint_);
  page_->add(builtIn_);
  page_->add(mine_);
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(page_, 1);
  column->addWidget(saveBar_);
}

void PresetsPage::render() {
  renderRows();
  renderQuestion();
}

void PresetsPage::renderRows() {
  const bool isOtherProduct = !isBuilt_ || product_ != model().product();
  isBuilt_ = true;
  product_ = model().product();
  if (isOtherProduct) {
    for (PresetRow* const row : std::exchange(ownRows_, {})) delete row;
    buildBuiltIn();
  }
  buildMine();
  const QString whyNot = whyNotApply(model());
  for (const auto* const rows : {&builtInRows_, &ownRows_}) {
    for (PresetRow* const row : *rows) {
      row->show(whyNot, whyWait(model()), progressText(model(), row->preset()));
    }
  }
}

void PresetsPage::buildBuiltIn() {
  for (PresetRow* const row : std::exchange(builtInRows_, {})) delete row;
  for (const TuningPreset& preset : TuningPreset::builtIn()) {
    builtInRows_.push_back(newRow(preset));
    builtIn_->add(builtInRows_.back());
  }
  orderControls();
}

// Rows of presets that are still there stay: so does what somebody points at or has the focus on.
void PresetsPage::buildMine() {
  const auto& presets = model().userPresets();
  const bool isSame = std::equal(
      ownRows_.begin(), ownRows_.end(), presets.begin(), presets.end(),
      [](const PresetRow* row, const TuningPreset& own) { return row->preset() == own; });
  hint_->setVisible(presets.empty());
  if (isSame) return;
  std::vector<PresetRow*> before = std::exchange(ownRows_, {});
  for (std::size_t i = 0; i < presets.size(); ++i) {
    const auto kept = std::find_if(before.begin(), before.end(), [&](const PresetRow* row) {
      return row != nullptr && row->preset() == presets[i];
    });
    ownRows_.push_back(kept == before.end() ? newRow(presets[i]) : std::exchange(*kept, nullptr));
    mine_->insert(static_cast<int>(i) + 1, ownRows_.back());
  }
  const auto focused = std::find_if(before.begin(), before.end(), [](const PresetRow* row) {
    return row != nullptr && row->isAncestorOf(QApplication::focusWidget());
  });
  const auto leftFrom = static_cast<std::size_t>(focused - before.begin());
  const bool leavesFocus = focused != before.end();
  for (PresetRow* const row : before) delete row;
  orderControls();
  if (leavesFocus) keepFocus(controlBefore(leftFrom));
}

// The last control before the user's row with that number, so that Tab goes on at the row.
QWidget* PresetsPage::controlBefore(std::size_t number) const {
  const auto& above = number == 0 ? builtInRows_ : ownRows_;
  const std::size_t last = (number == 0 ? builtInRows_.size() : number) - 1;
  return last < above.size() ? above[last]->lastControl() : nullptr;
}

void PresetsPage::orderControls() {
  std::vector<QWidget*> inReadingOrder(builtInRows_.begin(), builtInRows_.end());
  inReadingOrder.insert(inReadingOrder.end(), ownRows_.begin(), ownRows_.end());
  inReadingOrder.push_back(saveBar_);
  chainTabOrder(inReadingOrder);
}

PresetRow* PresetsPage::newRow(const TuningPreset& preset) {
  auto* const row = new PresetRow(preset, product_);
  connect(row, &PresetRow::applied, this, [this, preset] { ask(preset); });
  connect(
      row, &PresetRow::deleted, this, [this, preset] { model().deletePreset(preset); },
      Qt::QueuedConnection);
  return row;
}

void PresetsPage::ask(const TuningPreset& preset) {
  if (question_ || !model().tuning()) return;
  question_ =
      new ConfirmDialog(text(applyQuestion(preset)), text(applyConsequence(*model().tuning())),
                        QStringLiteral("Apply preset"), Button::Kind::prominent,
                        ConfirmDialog::Default::confirm, window());
  connect(question_, &QDialog::accepted, this, [this, preset] { model().apply(preset); });
  question_->open();
}

// What it says stays true while it is open; without a base there is nothing to ask any more.
void PresetsPage::renderQuestion() {
  if (!question_) return;
  if (model().isConnected() && model().tuning()) {
    question_->setMessage(text(applyConsequence(*model().tuning())));
  } else {
    question_->reject();
  }
}

}  // namespace quorvane
