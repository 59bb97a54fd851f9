#include "history/wheel_changes.h"

#include "session/menu_place.h"

namespace quorvane {

std::optional<WheelChanges::Gathered> WheelChanges::add(const TuningSnapshot& before,
                                                        const TuningSnapshot& after,
                                                        Monotonic::time_point now) {
  const bool isSwitch = MenuPlace(before) != MenuPlace(after);
  const bool isOver = gathered_ && (isSwitch || now - begin_ >= period ||
                                    MenuPlace(gathered_->after) != MenuPlace(after));
  auto ended = isOver ? take() : std::nullopt;
  if (isSwitch) return ended;
  if (gathered_) {
    gathered_->after = after;
  } else {
    gathered_ = Gathered{before, after};
    begin_ = now;
  }
  return ended;
}

std::optional<WheelChanges::Gathered> WheelChanges::take() {
  auto taken = std::exchange(gathered_, std::nullopt);
  if (taken && taken->before.raw() == taken->after.raw()) return std::nullopt;
  return taken;
}

}  // namespace quorvane
