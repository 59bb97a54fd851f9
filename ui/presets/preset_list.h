#pragma once

#include <QWidget>
#include <functional>
#include <vector>

#include "presets/tuning_preset.h"
#include "ui/presets/preset_row.h"

namespace quorvane {

// Presets below each other, in rows of one height. The widget of a row is made when the row comes
// near what is in view, so that opening a long list costs no more than opening a short one.
class PresetList final : public QWidget {
  Q_OBJECT

 public:
  using NewRow = std::function<PresetRow*(const TuningPreset&)>;

  explicit PresetList(NewRow newRow, QWidget* parent = nullptr);

  // Shows these presets from now on. A preset is known again by its id: the widget of an unchanged
  // one is kept, and a changed one keeps the focus on the button that has it.
  void setPresets(const std::vector<TuningPreset>& presets);

  // Makes all widgets anew, for other settings.
  void clear();

  std::size_t count() const { return entries_.size(); }

  // Those that were made, from top to bottom.
  std::vector<PresetRow*> rows() const;

  // How far the last change of the presets moved the row that was at this height before it, or the
  // next one that is still there. 0 when the shift was taken already.
  int takeShiftAt(int y);

  // Makes the rows in this part of the list, and some above and below it.
  void makeRows(const QRect& visible);

  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override;
  QSize sizeHint() const override;

 signals:
  // Rows were made; the first of them has a row before it, or null.
  void made(const std::vector<quorvane::PresetRow*>& rows, quorvane::PresetRow* before);

  // The row that had the focus is gone. `before` is the last one that was made above it, or null.
  void focusLeft(quorvane::PresetRow* before);

  // The list has another size: other rows may be in view.
  void resized();

 protected:
  bool event(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  struct Entry {
    TuningPreset preset;
    PresetRow* row = nullptr;  // once it was made
  };

  void adopt(std::vector<Entry>& before);
  void replace(Entry& entry, PresetRow* former);
  PresetRow* make(Entry& entry);
  PresetRow* rowBefore(std::size_t number) const;
  int pitch(int width) const;
  void place();

  const NewRow newRow_;
  std::vector<Entry> entries_;
  std::vector<UUID> idsBefore_;  // before the last change
};

}  // namespace quorvane
