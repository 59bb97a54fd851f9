#include <QHBoxLayout>
#include <algorithm>

#include "ui/kit/metrics.h"
#include "ui/kit/pickers.h"
#include "ui/model/availability.h"
#include "ui/presets/load_preset.h"
#include "ui/presets/preset_actions.h"
#include "ui/presets/preset_group.h"
#include "ui/presets/preset_list.h"
#include "ui/presets/preset_panel.h"
#include "ui/presets/preset_row.h"
#include "ui/presets/preset_scroll.h"
#include "ui/presets/presets_page.h"
#include "ui/presets/search_field.h"

namespace quorvane {
namespace {

QString progressText(const AppModel& model, const TuningPreset& preset) {
  const auto& progress = model.progress();
  if (!progress || progress->preset != preset.id) return {};
  return QStringLiteral("%1 of %2").arg(progress->done).arg(progress->total);
}

}  // namespace

void PresetsPage::renderRow(PresetRow& row) {
  row.show(whyNotLoad(model()), whyWait(model()), progressText(model(), row.preset()));
  row.compare(model().tuning());
  row.highlight(filter_);
  row.setMarked(marked_ == row.preset().id ||
                (panel_ != nullptr && panel_->isVisible() && chosen_ == row.preset().id));
}

void PresetsPage::renderRows() {
  for (const PresetList* const list : {builtIn_, own_}) {
    for (PresetRow* const row : list->rows()) renderRow(*row);
  }
}

void PresetsPage::orderRows(const PresetGroup& group, const std::vector<PresetRow*>& rows,
                            PresetRow* before) {
  QWidget* last = before != nullptr ? before : &group.caption();
  for (PresetRow* const row : rows) {
    renderRow(*row);
    setTabOrder(last, row);
    last = row;
  }
}

PresetRow* PresetsPage::newRow(const ListedPreset& preset) {
  auto* const row = new PresetRow(preset, *form_, values_);
  // Queued: most actions delete the row.
  connect(
      row, &PresetRow::asked, this, [this, preset](PresetAction action) { act(*preset, action); },
      Qt::QueuedConnection);
  connect(row, &PresetRow::menuAsked, this,
          [this, preset](const QPoint& position) { actions_->openMenu(*preset, position); });
  connect(row, &PresetRow::stepped, this, [this, row](PresetStep next) { step(*row, next); });
  connect(row, &PresetRow::entered, this, [this, preset] {
    if (marked_ && *marked_ != preset->id) mark(std::nullopt);
    choose(preset->id);
  });
  connect(row, &PresetRow::dragged, this,
          [this](const QPoint& position) { mover_.drag(position); });
  connect(row, &PresetRow::dropped, this,
          [this, row](bool isCancelled) { mover_.drop(*row, isCancelled); });
  return row;
}

// Creates the first row, which may take the focus before the page is laid out.
const QWidget& PresetsPage::mainPart() const {
  for (PresetList* const list : {builtIn_, own_}) {
    if (list->isVisible() && list->rowAt(0) != nullptr) return *list;
  }
  return *this;
}

std::optional<TuningPreset> PresetsPage::focusedPreset() const {
  const QWidget* const focused = window()->focusWidget();
  if (!isVisible() || focused == nullptr) return std::nullopt;
  for (const PresetList* const list : {builtIn_, own_}) {
    for (const PresetRow* const row : list->rows()) {
      if (row == focused || row->isAncestorOf(focused)) return row->preset();
    }
  }
  return std::nullopt;
}

PresetList& PresetsPage::listOf(const PresetRow& row) const {
  return builtIn_->isAncestorOf(&row) ? *builtIn_ : *own_;
}

void PresetsPage::goTo(PresetRow* row) {
  if (row == nullptr) return;
  scroll_->reveal(*row);
  row->setFocus(Qt::TabFocusReason);
}

void PresetsPage::step(PresetRow& row, PresetStep step) {
  PresetList& list = listOf(row);
  const std::size_t number = list.numberOf(row);
  switch (step) {
    case PresetStep::up:
      if (number > 0) {
        goTo(list.rowAt(number - 1));
      } else if (&list == own_ && builtIn_->isVisible()) {
        goTo(builtIn_->rowAt(builtIn_->count() - 1));
      }
      break;
    case PresetStep::down:
      if (number + 1 < list.count()) {
        goTo(list.rowAt(number + 1));
      } else if (&list == builtIn_ && own_->isVisible()) {
        goTo(own_->rowAt(0));
      }
      break;
    case PresetStep::first:
      goTo(list.rowAt(0));
      break;
    case PresetStep::last:
      goTo(list.rowAt(list.count() - 1));
      break;
  }
}

void PresetsPage::act(const TuningPreset& preset, PresetAction action) {
  const bool isMove = action == PresetAction::moveUp || action == PresetAction::moveDown;
  if (!isMove) {
    actions_->run(action, preset);
    return;
  }
  const PresetRow* const row = own_->rowOf(preset.id);
  if (row == nullptr) return;
  const bool isMoved = action == PresetAction::moveUp ? mover_.moveUp(*row) : mover_.moveDown(*row);
  if (!isMoved) return;
  list();
  goTo(own_->rowOf(preset.id));
}

// Scrolls once it is laid out. A preset that a search hides ends the search.
void PresetsPage::revealAdded() {
  if (model().addedPreset() == added_) return;
  added_ = model().addedPreset();
  const auto& own = model().userPresets();
  const bool isThere = std::any_of(
      own.begin(), own.end(), [this](const TuningPreset& preset) { return preset.id == added_; });
  if (!isThere) return;
  mark(added_);
  choose(*added_);
  QMetaObject::invokeMethod(
      this,
      [this, id = *added_] {
        if (own_->rowOf(id) == nullptr) {
          games_->setCurrentIndex(0);
          search_->clear();
          search();
        }
        ownGroup_->unfold();
        if (PresetRow* const row = own_->rowOf(id)) scroll_->reveal(*row);
      },
      Qt::QueuedConnection);
}

void PresetsPage::mark(const std::optional<UUID>& preset) {
  marked_ = preset;
  renderRows();
}

// To the first row, or where the focus was before.
void PresetsPage::leaveSearch() {
  for (PresetList* const list : {builtIn_, own_}) {
    if (!list->isVisible()) continue;
    goTo(list->rowAt(0));
    return;
  }
  takeFocus();
}

void PresetsPage::choose(const UUID& preset) {
  if (chosen_ == preset) return;
  chosen_ = preset;
  renderPanel();
}

// Without a chosen preset the panel shows the first one that is listed.
void PresetsPage::renderPanel() {
  if (panel_ == nullptr || !panel_->isVisible()) return;
  const auto find = [this](const std::vector<TuningPreset>& presets) -> const TuningPreset* {
    const auto found =
        std::find_if(presets.begin(), presets.end(),
                     [this](const TuningPreset& preset) { return preset.id == chosen_; });
    return found == presets.end() ? nullptr : &*found;
  };
  const TuningPreset* preset = find(model().userPresets());
  if (preset == nullptr) preset = find(TuningPreset::builtIn());
  if (preset == nullptr) preset = &TuningPreset::builtIn().front();
  chosen_ = preset->id;
  panel_->explain(*preset);
  renderRows();
}

// The panel is beside the list in wide windows.
void PresetsPage::placePanel() {
  const bool isWide = window()->width() >= Metrics::wideFrom;
  if (isWide && panel_ == nullptr) {
    panel_ = new PresetPanel(model());
    body_->addWidget(panel_);
    connect(panel_, &PresetPanel::compareAsked, this, &PresetsPage::compareAsked);
    connect(panel_, &PresetPanel::editAsked, this,
            [this](const TuningPreset& preset) { act(preset, PresetAction::edit); });
  }
  if (panel_ == nullptr || panel_->isVisibleTo(this) == isWide) return;
  panel_->setVisible(isWide);
  renderPanel();
  renderRows();
}

}  // namespace quorvane
