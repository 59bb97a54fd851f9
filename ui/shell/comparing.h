#pragma once

#include <QObject>
#include <QPointer>

#include "ui/compare/compare_side.h"
#include "ui/compare/last_menu.h"

class QMenu;
class QWidget;

namespace quorvane {

class AppModel;
class CompareWindow;
class PresetsPage;

// Opens the window that compares two sides, for all parts of the window that offer it. There is one
// such window at a time: it shows what was asked for last. Main thread only.
class Comparing final : public QObject {
  Q_OBJECT

 public:
  // `window` is the main window. Adds the key that pastes settings to it.
  Comparing(AppModel& model, QWidget& window);

  // Adds "Compare…". With the focus on a preset it compares that one with the base.
  void addEntry(QMenu& menu);

  // Offers the comparison in the menus of presets and in the panel.
  void follow(PresetsPage& presets);

 public slots:
  // Each compares something with what the base has, which is the left side.
  void comparePreset(const quorvane::TuningPreset& preset);

  // The menu before, or after, a write of the history. Does nothing for a record without it.
  void compareBefore(const quorvane::HistoryRecord& record);
  void compareAfter(const quorvane::HistoryRecord& record);

  // What was pasted, see pastedSides(): all of it is offered, the first is compared.
  void paste();

 protected:
  // Closes the window together with the main window.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void compareChosen();
  void compare(const CompareSide& right);

  AppModel& model_;
  QWidget& window_;
  const LastMenu lastMenu_;
  QPointer<CompareWindow> open_;
  QPointer<PresetsPage> presets_;
};

}  // namespace quorvane
