#pragma once

#include <QPointer>
#include <QWidget>
#include <memory>
#include <optional>
#include <vector>

#include "ui/presets/listed_presets.h"
#include "ui/presets/preset_action.h"
#include "ui/presets/preset_row_layout.h"

class QAbstractButton;

namespace quorvane {

class BadgeLabel;
class Button;
class ElidedLabel;
class IconButton;
class PresetFilter;
class PresetNotes;
class PresetStrip;
class ValueTexts;

// One preset: its name, game, publisher, notes and values, and what can be done with it. A compact
// row has no notes.
//
// The row is one stop of the Tab key. Its keys ask for actions, and Left and Right walk its
// buttons. A button that is disabled hands the focus to its row, and gets it back when it is
// enabled again.
class PresetRow final : public QWidget {
  Q_OBJECT
  Q_PROPERTY(bool ringInside READ hasRingInside)  // FocusRing reads it

 public:
  // Rows with the same `values` share what they lay out.
  PresetRow(ListedPreset preset, const PresetForm& form, const std::shared_ptr<ValueTexts>& values,
            QWidget* parent = nullptr);

  const TuningPreset& preset() const { return *preset_; }

  // Whether it shows all of its notes, in more lines than other rows.
  bool isUnfolded() const;

  // The reasons why it cannot be applied (or loaded) or deleted, and the progress of applying; each
  // may be empty.
  void show(const QString& whyNotApply, const QString& whyNotDelete, const QString& progress);
  using QWidget::show;

  // Shows what would be different at the base.
  void compare(const std::optional<TuningSnapshot>& menu);

  // Gives what the filter looks for the ground of a search's hits.
  void highlight(const PresetFilter& filter);

  // A marked row is the one that a panel explains, or a new one.
  void setMarked(bool isMarked);
  bool isMarked() const { return isMarked_; }

  bool hasRingInside() const { return true; }

  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override;

 signals:
  void asked(quorvane::PresetAction action);
  void menuAsked(const QPoint& globalPosition);
  void stepped(quorvane::PresetStep step);

  // The row or something in it has got the focus.
  void entered();

  // The row's height has changed.
  void grown();

  // The user drags the row, which is one of the user's own, and drops it.
  void dragged(const QPoint& globalPosition);
  void dropped(bool isCancelled);

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  bool focusNextPrevChild(bool next) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void buildTexts();
  void buildButtons();
  void addButton(QAbstractButton* button, const char* objectName, const QString& word);
  std::vector<QWidget*> stops() const;
  bool handle(const QKeyEvent& event);
  bool handleReorder(const QKeyEvent& event);
  void walk(bool forward);
  void openMenu();
  void placeDetails(QRect room);
  void putAt(QWidget* part, const QRect& rect);
  int notesHeight(int width) const;

  const ListedPreset preset_;
  const PresetForm form_;
  ElidedLabel* name_ = nullptr;
  ElidedLabel* game_ = nullptr;
  ElidedLabel* source_ = nullptr;
  PresetNotes* notes_ = nullptr;
  PresetStrip* strip_;
  BadgeLabel* badge_;        // right of the values
  BadgeLabel* narrowBadge_;  // before the game, in narrow windows
  Button* load_;
  Button* apply_;
  IconButton* menu_;
  IconButton* trash_ = nullptr;
  QRect dot_;                        // between game and source
  QPointer<QWidget> unfocused_;      // the disabled button that gets the focus back
  std::optional<QPoint> dragStart_;  // global
  bool isDragging_ = false;
  bool isMarked_ = false;
};

}  // namespace quorvane
