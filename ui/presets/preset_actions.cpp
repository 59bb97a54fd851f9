#include "ui/presets/preset_actions.h"

#include <QApplication>
#include <QClipboard>
#include <QMenu>
#include <QWidget>
#include <vector>

#include "presets/settings_text.h"
#include "ui/kit/confirm_dialog.h"
#include "ui/kit/text.h"
#include "ui/model/availability.h"
#include "ui/presets/edit_preset_dialog.h"
#include "ui/presets/load_preset.h"
#include "ui/presets/preset_filter.h"
#include "ui/presets/preset_text.h"

namespace quorvane {
namespace {

QStringList knownGames(const AppModel& model) {
  std::vector<TuningPreset> presets = model.userPresets();
  const auto& builtIn = TuningPreset::builtIn();
  presets.insert(presets.end(), builtIn.begin(), builtIn.end());
  return gamesOf(presets);
}

}  // namespace

PresetActions::PresetActions(AppModel& model, QWidget* parent)
    : QObject(parent), model_(model), parent_(parent) {}

void PresetActions::run(PresetAction action, const TuningPreset& preset) {
  switch (action) {
    case PresetAction::load:
      loadPreset(model_, preset);
      break;
    case PresetAction::apply:
      ask(preset);
      break;
    case PresetAction::duplicate:
      model_.duplicatePreset(preset);
      break;
    case PresetAction::copyText:
      QApplication::clipboard()->setText(text(settingsText(preset, model_.product())));
      break;
    case PresetAction::edit:
      edit(preset);
      break;
    case PresetAction::replace:
      model_.replacePreset(preset);
      break;
    case PresetAction::remove:
      model_.deletePreset(preset);
      break;
    case PresetAction::moveUp:
    case PresetAction::moveDown:
      break;
  }
}

void PresetActions::openMenu(const TuningPreset& preset, const QPoint& globalPosition) {
  auto* const menu = new QMenu(parent_);
  menu->setObjectName(QStringLiteral("presetMenu"));
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->setToolTipsVisible(true);
  const auto add = [&](const QString& title, const char* name, PresetAction action) {
    QAction* const entry = menu->addAction(title);
    entry->setObjectName(QString::fromLatin1(name));
    connect(
        entry, &QAction::triggered, this, [this, action, preset] { run(action, preset); },
        Qt::QueuedConnection);
    return entry;
  };
  if (!preset.isBuiltIn) {
    add(QStringLiteral("&Edit…"), "editPresetAction", PresetAction::edit);
  }
  add(QStringLiteral("&Duplicate"), "duplicatePresetAction", PresetAction::duplicate);
  add(QStringLiteral("&Copy as text"), "copyPresetAction", PresetAction::copyText);
  if (!preset.isBuiltIn) {
    QAction* const replace = add(QStringLiteral("&Replace by the current menu"),
                                 "replacePresetAction", PresetAction::replace);
    setAvailable(replace, model_.tuning()
                              ? QString()
                              : QStringLiteral("Connect a base first: its menu is what is kept"));
  }
  emit menuOpened(*menu, preset);
  menu->popup(globalPosition);
}

void PresetActions::edit(const TuningPreset& preset) {
  auto* const dialog = new EditPresetDialog(preset, knownGames(model_), parent_->window());
  connect(dialog, &EditPresetDialog::saved, &model_, &AppModel::editPreset);
  dialog->open();
}

QString PresetActions::consequence() const {
  return text(applyConsequence(*model_.tuning(), model_.staged().size()));
}

void PresetActions::ask(const TuningPreset& preset) {
  if (question_ || !model_.tuning()) return;
  question_ = new ConfirmDialog(text(applyQuestion(preset)), consequence(),
                                QStringLiteral("Apply preset"), Button::Kind::prominent,
                                ConfirmDialog::Default::confirm, parent_->window());
  connect(question_, &QDialog::accepted, this, [this, preset] { model_.apply(preset); });
  question_->open();
}

void PresetActions::render() {
  if (!question_) return;
  if (model_.isConnected() && model_.tuning()) {
    question_->setMessage(consequence());
  } else {
    question_->reject();
  }
}

}  // namespace quorvane
