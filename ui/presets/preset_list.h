#pragma once

#include <QWidget>
#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

#include "presets/tuning_preset.h"
#include "ui/presets/listed_presets.h"
#include "ui/presets/preset_row.h"

namespace quorvane {

// A vertical list of presets. The widget of a row is created lazily, when the row comes near the
// visible part, and deleted when it is far away again, so that a long list is as fast and as small
// as a short one. A row with the focus or with unfolded notes stays.
class PresetList final : public QWidget {
  Q_OBJECT

 public:
  using NewRow = std::function<PresetRow*(const ListedPreset&)>;

  explicit PresetList(NewRow newRow, QWidget* parent = nullptr);

  // Replaces the presets. They are matched by id: the widget of an unchanged preset is kept, and
  // the new widget of a changed one keeps the focus on the same button.
  void setPresets(const std::vector<ListedPreset>& presets);
  void setPresets(const std::vector<TuningPreset>& presets);

  // Removes all presets and their widgets. The next ones have this form.
  void start(const PresetForm& form);

  std::size_t count() const { return entries_.size(); }

  // The rows created so far, from top to bottom.
  std::vector<PresetRow*> rows() const;

  // The preset's row, which is created if needed; null if the preset is not in the list.
  PresetRow* rowOf(const UUID& id);

  // The row with this number from the top, which is created if needed; null beyond the last one.
  PresetRow* rowAt(std::size_t number);

  // The number of the row; count() if it is none of this list.
  std::size_t numberOf(const PresetRow& row) const;
  const TuningPreset& presetAt(std::size_t number) const { return *entries_[number].preset; }

  // Shows where a dragged row would land for this place in the list, and hides it. Returns the
  // number of the row that it would land before, count() for the end.
  std::size_t showDropAt(int y);
  void hideDrop();

  // By how many pixels the last setPresets() moved the row that was at height `y` before, or the
  // next row that still exists. Later calls return 0.
  int takeShiftAt(int y);

  // Creates the rows in this part of the list, and some above and below it.
  void makeRows(const QRect& visible);

  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override;
  QSize sizeHint() const override;

 signals:
  // Rows were created. In the Tab order they follow `before`; null: they are the first.
  void made(const std::vector<quorvane::PresetRow*>& rows, quorvane::PresetRow* before);

  // The row with the focus is removed. `before` is the nearest created row above it, or null.
  void focusLeft(quorvane::PresetRow* before);

  // The size of the list has changed: other rows may be visible.
  void resized();

 protected:
  bool event(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  struct Entry {
    ListedPreset preset;
    int notesAdvance = 0;      // PresetNotes::advanceOf()
    PresetRow* row = nullptr;  // null until it is created
  };

  bool shows(const std::vector<ListedPreset>& presets) const;
  void adopt(std::vector<Entry>& before);
  void replace(Entry& entry, PresetRow* former);
  PresetRow* make(Entry& entry);
  PresetRow* rowBefore(std::size_t number) const;
  std::vector<int> tops(int width) const;
  void dropRows();
  bool isUsed(const PresetRow& row) const;
  void measureNotes();
  void place();

  const NewRow newRow_;
  PresetForm form_;
  QWidget* dropMark_;
  std::unordered_map<std::string, int> advances_;  // PresetNotes::advanceOf() of notes seen before
  std::vector<Entry> entries_;
  std::size_t firstNear_ = 0;  // of the rows near the visible part
  std::size_t lastNear_ = 0;
  bool isDropDue_ = false;
  std::vector<int> tops_;        // of the rows at the current width, and of the row after the last
  std::vector<UUID> idsBefore_;  // before the last setPresets()
  std::vector<int> topsBefore_;
};

}  // namespace quorvane
