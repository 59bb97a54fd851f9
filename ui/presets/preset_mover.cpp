#include "ui/presets/preset_mover.h"

#include <QScrollBar>
#include <utility>

#include "ui/presets/preset_list.h"
#include "ui/presets/preset_row.h"
#include "ui/presets/preset_scroll.h"

namespace quorvane {
namespace {

using Where = PresetChange::Destination::Where;

constexpr int dragEdge = 24;
constexpr int dragScroll = 16;

}  // namespace

PresetMover::PresetMover(AppModel& model, PresetList& list, PresetScroll& scroll)
    : model_(model), list_(list), scroll_(scroll) {}

bool PresetMover::moveUp(const PresetRow& row) {
  const std::size_t number = list_.numberOf(row);
  if (number == 0 || number >= list_.count()) return false;
  model_.movePreset(row.preset(), {Where::before, list_.presetAt(number - 1)});
  return true;
}

bool PresetMover::moveDown(const PresetRow& row) {
  const std::size_t number = list_.numberOf(row);
  if (number + 1 >= list_.count()) return false;
  model_.movePreset(row.preset(), {Where::after, list_.presetAt(number + 1)});
  return true;
}

void PresetMover::drag(const QPoint& globalPosition) {
  const int y = scroll_.viewport()->mapFromGlobal(globalPosition).y();
  QScrollBar& bar = *scroll_.verticalScrollBar();
  if (y < dragEdge) bar.setValue(bar.value() - dragScroll);
  if (y > scroll_.viewport()->height() - dragEdge) bar.setValue(bar.value() + dragScroll);
  dropAt_ = list_.showDropAt(list_.mapFromGlobal(globalPosition).y());
}

void PresetMover::drop(const PresetRow& row, bool isCancelled) {
  list_.hideDrop();
  const auto place = std::exchange(dropAt_, std::nullopt);
  if (isCancelled || !place || list_.count() == 0) return;
  if (*place >= list_.count()) {
    model_.movePreset(row.preset(), {Where::after, list_.presetAt(list_.count() - 1)});
  } else {
    model_.movePreset(row.preset(), {Where::before, list_.presetAt(*place)});
  }
}

}  // namespace quorvane
