#include "ui/presets/presets_page.h"

#include <QAction>
#include <QLabel>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "ui/kit/confirm_dialog.h"
#include "ui/kit/form.h"
#include "ui/kit/metrics.h"
#include "ui/kit/tab_order.h"
#include "ui/kit/text.h"
#include "ui/model/availability.h"
#include "ui/presets/codes_bar.h"
#include "ui/presets/load_preset.h"
#include "ui/presets/preset_list.h"
#include "ui/presets/preset_row.h"
#include "ui/presets/preset_strip.h"
#include "ui/presets/preset_text.h"
#include "ui/presets/save_preset_bar.h"

namespace quorvane {
namespace {

constexpr int cardGap = 10;

QString progressText(const AppModel& model, const TuningPreset& preset) {
  const auto& progress = model.progress();
  if (!progress || progress->preset != preset.id) return {};
  return QStringLiteral("%1 of %2").arg(progress->done).arg(progress->total);
}

}  // namespace

PresetsPage::PresetsPage(AppModel& model, QWidget* parent)
    : View(model, parent),
      page_(new FormPage(QStringLiteral("Presets"), Metrics::contentWidth - 2 * Metrics::pageInset,
                         cardGap)),
      codes_(new CodesBar(model)),
      builtIn_(new Card(QStringLiteral("Built in"))),
      mine_(new Card(QStringLiteral("Mine"))),
      hint_(messageRow(QStringLiteral("Save the current menu below to create your first preset."),
                       QStringLiteral("noPresetsHint"))),
      own_(new PresetList([this](const TuningPreset& preset) { return newRow(preset); })),
      saveBar_(new SavePresetBar(model)) {
  setObjectName(QStringLiteral("presetsPage"));
  setAccessibleName(QStringLiteral("Presets"));
  builtIn_->setObjectName(QStringLiteral("builtInPresets"));
  mine_->setObjectName(QStringLiteral("minePresets"));
  mine_->add(hint_);
  mine_->add(own_);
  page_->pin(codes_);
  page_->add(builtIn_);
  page_->add(mine_);
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(page_, 1);
  column->addWidget(saveBar_);
  // A text field with the focus handles Ctrl+Z itself.
  auto* const undo = new QAction(this);
  undo->setObjectName(QStringLiteral("undoDeleteAction"));
  undo->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Z));
  connect(undo, &QAction::triggered, this, [this] { this->model().undoPresets(); });
  addAction(undo);
  connect(page_, &FormPage::scrolled, this, &PresetsPage::makeRows);
  connect(own_, &PresetList::resized, this, &PresetsPage::makeRows);
  connect(own_, &PresetList::made, this, &PresetsPage::orderRows);
  connect(own_, &PresetList::focusLeft, this, [this](const PresetRow* before) {
    if (before == nullptr) before = builtInRows_.back();
    keepFocus(before->lastControl());
  });
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
    own_->clear();
    buildBuiltIn();
  }
  showMine();
  for (PresetRow* const row : builtInRows_) renderRow(*row);
  for (PresetRow* const row : own_->rows()) renderRow(*row);
}

void PresetsPage::renderRow(PresetRow& row) {
  row.show(whyNotLoad(model()), whyWait(model()), progressText(model(), row.preset()));
  row.compare(model().tuning());
}

// All strips are as wide as those of the built-in presets, which always exist.
void PresetsPage::alignCodes() {
  if (builtInRows_.empty()) return;
  const PresetStrip& strip = builtInRows_.front()->strip();
  codes_->follow(strip.mapTo(this, QPoint()).x(), strip.width());
}

void PresetsPage::buildBuiltIn() {
  for (PresetRow* const row : std::exchange(builtInRows_, {})) delete row;
  for (const TuningPreset& preset : TuningPreset::builtIn()) {
    builtInRows_.push_back(newRow(preset));
    builtIn_->add(builtInRows_.back());
  }
  connect(&builtInRows_.front()->strip(), &PresetStrip::resized, this, &PresetsPage::alignCodes);
  orderControls();
}

// Adjusts the scroll position so that visible rows stay when rows above them come or go.
void PresetsPage::showMine() {
  const auto& presets = model().userPresets();
  const QRect visible = page_->visiblePart(*own_);
  const bool isAnchored = !visible.isEmpty() && own_->count() > 0 && visible.top() > 0;
  own_->setPresets(presets);
  hint_->setVisible(presets.empty());
  own_->setVisible(!presets.empty());
  if (isAnchored) page_->scrollBy(own_->takeShiftAt(visible.top()), *own_);
}

void PresetsPage::makeRows() { own_->makeRows(page_->visiblePart(*own_)); }

void PresetsPage::orderControls() {
  std::vector<QWidget*> inReadingOrder(builtInRows_.begin(), builtInRows_.end());
  for (PresetRow* const row : own_->rows()) inReadingOrder.push_back(row);
  inReadingOrder.push_back(saveBar_);
  chainTabOrder(inReadingOrder);
}

void PresetsPage::orderRows(const std::vector<PresetRow*>& rows, PresetRow* before) {
  std::vector<QWidget*> inReadingOrder{before != nullptr ? before : builtInRows_.back()};
  for (PresetRow* const row : rows) {
    renderRow(*row);
    inReadingOrder.push_back(row);
  }
  chainTabOrder(inReadingOrder);
}

PresetRow* PresetsPage::newRow(const TuningPreset& preset) {
  auto* const row = new PresetRow(preset, product_);
  connect(row, &PresetRow::loaded, this, [this, preset] { loadPreset(model(), preset); });
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

// Updates the open question; closes it when there is no base any more.
void PresetsPage::renderQuestion() {
  if (!question_) return;
  if (model().isConnected() && model().tuning()) {
    question_->setMessage(text(applyConsequence(*model().tuning())));
  } else {
    question_->reject();
  }
}

void PresetsPage::focusNewName() { saveBar_->focusName(); }

}  // namespace quorvane
