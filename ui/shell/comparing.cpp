#include "ui/shell/comparing.h"

#include <QAction>
#include <QEvent>
#include <QMenu>
#include <QWidget>
#include <algorithm>

#include "ui/compare/compare_window.h"
#include "ui/compare/pasted_sides.h"
#include "ui/presets/presets_page.h"

namespace quorvane {

Comparing::Comparing(AppModel& model, QWidget& window)
    : QObject(&window), model_(model), window_(window), lastMenu_(model) {
  auto* const paste = new QAction(&window);
  paste->setObjectName(QStringLiteral("pasteSettingsAction"));
  paste->setShortcut(QKeySequence::Paste);
  connect(paste, &QAction::triggered, this, &Comparing::paste);
  window.addAction(paste);
  window.installEventFilter(this);
}

bool Comparing::eventFilter(QObject* watched, QEvent* event) {
  if (watched == &window_ && event->type() == QEvent::Hide && !event->spontaneous() && open_) {
    open_->close();
  }
  return QObject::eventFilter(watched, event);
}

void Comparing::addEntry(QMenu& menu) {
  QAction* const entry =
      menu.addAction(QStringLiteral("&Compare…"), QKeySequence(Qt::CTRL | Qt::Key_D), this,
                     &Comparing::compareChosen);
  entry->setObjectName(QStringLiteral("compareAction"));
}

void Comparing::follow(PresetsPage& presets) {
  presets_ = &presets;
  connect(&presets, &PresetsPage::compareAsked, this, &Comparing::comparePreset);
  connect(&presets, &PresetsPage::menuOpened, this,
          [this](QMenu& menu, const TuningPreset& preset) {
            auto* const entry = new QAction(QStringLiteral("Co&mpare…"), &menu);
            entry->setObjectName(QStringLiteral("comparePresetAction"));
            connect(
                entry, &QAction::triggered, this, [this, preset] { comparePreset(preset); },
                Qt::QueuedConnection);
            menu.insertAction(menu.actions().value(0), entry);
          });
}

// Without a preset in sight, the first one of the user's, else the first built-in one.
void Comparing::compareChosen() {
  const auto focused = presets_ ? presets_->focusedPreset() : std::nullopt;
  const auto& own = model_.userPresets();
  comparePreset(focused ? *focused : own.empty() ? TuningPreset::builtIn().front() : own.front());
}

void Comparing::comparePreset(const TuningPreset& preset) {
  compare(CompareSide::ofPreset(preset));
}

void Comparing::compareBefore(const HistoryRecord& record) {
  if (const auto side = CompareSide::before(record)) compare(*side);
}

void Comparing::compareAfter(const HistoryRecord& record) {
  if (const auto side = CompareSide::after(record)) compare(*side);
}

void Comparing::paste() {
  const auto sides = pastedSides(model_);
  std::for_each(sides.rbegin(), sides.rend(), [this](const CompareSide& side) { compare(side); });
}

void Comparing::compare(const CompareSide& right) {
  if (!open_) open_ = new CompareWindow(model_, lastMenu_, &window_);
  open_->compare(CompareSide::base(), right);
}

}  // namespace quorvane
