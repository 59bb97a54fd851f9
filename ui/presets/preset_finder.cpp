#include "ui/presets/preset_finder.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "presets/preset_search.h"
#include "support/text.h"
#include "ui/kit/button.h"
#include "ui/kit/metrics.h"
#include "ui/kit/text.h"
#include "ui/model/availability.h"
#include "ui/presets/load_preset.h"

namespace quorvane {
namespace {

constexpr int finderWidth = 480;
constexpr int linesShown = 10;

// "GT3, all tracks · Assetto Corsa"
QString entry(const TuningPreset& preset) {
  QString name = text(oneLine(preset.name));
  if (preset.game.empty() || preset.game == "Any") return name;
  return name + QStringLiteral(" · ") + text(oneLine(preset.game));
}

}  // namespace

PresetFinder::PresetFinder(AppModel& model, QWidget* parent)
    : Dialog(QStringLiteral("Load preset"), parent),
      model_(model),
      field_(new QLineEdit),
      list_(new QListWidget),
      load_(new Button(QStringLiteral("Load"), Button::Kind::prominent)) {
  setObjectName(QStringLiteral("presetFinder"));
  field_->setObjectName(QStringLiteral("finderField"));
  field_->setPlaceholderText(QStringLiteral("Name, game, notes, or a value such as FF=80"));
  field_->setAccessibleName(QStringLiteral("Search presets"));
  field_->installEventFilter(this);
  list_->setObjectName(QStringLiteral("finderList"));
  list_->setAccessibleName(QStringLiteral("Presets that match"));
  list_->setMinimumHeight(linesShown * Metrics::atLeast(Metrics::logRowHeight, font()));
  list_->setUniformItemSizes(true);
  content().addWidget(field_);
  content().addWidget(list_);
  load_->setObjectName(QStringLiteral("finderLoadButton"));
  load_->setDefault(true);
  addButton(load_, true);
  auto* const cancel = new Button(QStringLiteral("Cancel"));
  cancel->setObjectName(QStringLiteral("finderCancelButton"));
  addButton(cancel, false);
  setFixedWidth(finderWidth);
  connect(field_, &QLineEdit::textChanged, this, &PresetFinder::list);
  connect(list_, &QListWidget::itemActivated, load_, &Button::click);
  connect(this, &QDialog::accepted, this, &PresetFinder::load);
  connect(&model, &AppModel::changed, this, &PresetFinder::refresh);
  refresh();
  field_->setFocus();
}

void PresetFinder::refresh() {
  if (!model_.tuning()) {
    reject();
    return;
  }
  std::vector<TuningPreset> presets = model_.userPresets();
  const auto& builtIn = TuningPreset::builtIn();
  presets.insert(presets.end(), builtIn.begin(), builtIn.end());
  if (presets != presets_) {
    const auto chosen = this->chosen();
    presets_ = std::move(presets);
    list();
    if (chosen) choose(*chosen);
  }
  renderButton();
}

void PresetFinder::list() {
  const PresetSearch search(text(field_->text()));
  found_.clear();
  list_->clear();
  for (std::size_t number = 0; number < presets_.size(); ++number) {
    if (!search.matches(presets_[number])) continue;
    found_.push_back(number);
    list_->addItem(entry(presets_[number]));
  }
  list_->setCurrentRow(0);
  renderButton();
}

void PresetFinder::renderButton() {
  setAvailable(*load_, found_.empty() ? QStringLiteral("No preset matches") : whyNotLoad(model_));
}

std::optional<TuningPreset> PresetFinder::chosen() const {
  const int row = list_->currentRow();
  if (row < 0) return std::nullopt;
  return presets_[found_[static_cast<std::size_t>(row)]];
}

void PresetFinder::choose(const TuningPreset& preset) {
  for (std::size_t row = 0; row < found_.size(); ++row) {
    if (presets_[found_[row]].id == preset.id) list_->setCurrentRow(static_cast<int>(row));
  }
}

void PresetFinder::load() {
  if (const auto preset = chosen()) loadPreset(model_, *preset);
}

// While the field has the focus, the keys that move up and down belong to the list.
bool PresetFinder::eventFilter(QObject* watched, QEvent* event) {
  if (watched == field_ && event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    const bool isVertical = key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp ||
                            key == Qt::Key_PageDown;
    if (isVertical) {
      const int step = key == Qt::Key_Up || key == Qt::Key_PageUp ? -1 : 1;
      const int by = key == Qt::Key_Up || key == Qt::Key_Down ? step : step * linesShown;
      list_->setCurrentRow(std::max(0, std::min(list_->currentRow() + by, list_->count() - 1)));
      return true;
    }
  }
  return Dialog::eventFilter(watched, event);
}

}  // namespace quorvane
