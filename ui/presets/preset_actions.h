#pragma once

#include <QObject>
#include <QPointer>

#include "app/app_model.h"
#include "ui/presets/preset_action.h"

class QMenu;
class QWidget;

namespace quorvane {

class ConfirmDialog;

// Does with presets what their rows ask for. Asks before one is applied.
class PresetActions final : public QObject {
  Q_OBJECT

 public:
  // Dialogs belong to the parent's window.
  PresetActions(AppModel& model, QWidget* parent);

  // Does nothing for moveUp and moveDown, which depend on what is listed.
  void run(PresetAction action, const TuningPreset& preset);

  // Opens the menu of a row. menuOpened() may add entries to it.
  void openMenu(const TuningPreset& preset, const QPoint& globalPosition);

  // Updates the open question; closes it when there is no base any more.
  void render();

 signals:
  void menuOpened(QMenu& menu, const quorvane::TuningPreset& preset);

 private:
  void ask(const TuningPreset& preset);
  void edit(const TuningPreset& preset);
  QString consequence() const;

  AppModel& model_;
  QWidget* parent_;
  QPointer<ConfirmDialog> question_;  // while it is open
};

}  // namespace quorvane
