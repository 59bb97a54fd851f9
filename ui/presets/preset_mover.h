#pragma once

#include <QPoint>
#include <cstddef>
#include <optional>

#include "app/app_model.h"

namespace quorvane {

class PresetList;
class PresetRow;
class PresetScroll;

// Changes the order of the user's presets, by key and by dragging a row.
class PresetMover final {
 public:
  // All must outlive this object.
  PresetMover(AppModel& model, PresetList& list, PresetScroll& scroll);

  // Moves the preset over the one that is listed above or below it. False at the end of the list.
  bool moveUp(const PresetRow& row);
  bool moveDown(const PresetRow& row);

  // Shows where the dragged row would land; scrolls near the ends of the visible part.
  void drag(const QPoint& globalPosition);
  void drop(const PresetRow& row, bool isCancelled);

 private:
  AppModel& model_;
  PresetList& list_;
  PresetScroll& scroll_;
  std::optional<std::size_t>
      dropAt_;  // while a row is dragged: before this one, count() is the end
};

}  // namespace quorvane
