#pragma once

#include <cstdint>
#include <optional>

#include "session/menu_place.h"
#include "session/wheel_base.h"

namespace quorvane {

// Writes values that belong together, one by one, into one set. When the base is in another set,
// because another program or a hand on the wheel switched it, or because it did not take a switch
// that was asked for here, the rest is refused instead of written there.
class MenuWriter {
 public:
  // The values are meant for the set and the mode of `menu`; without one, for whichever is active.
  // The base must outlive this.
  MenuWriter(WheelBase& base, const std::optional<TuningSnapshot>& menu);

  // Writes and verifies one value, and returns what was read back. A value of `slot` switches the
  // set; whatever becomes of the switch, the values after it are meant for the set that was asked
  // for. Throws what WheelBase::set throws, and for `slot` outOfRange, before anything is sent, or
  // writeIgnored, when the base still reports another set.
  TuningSnapshot write(TuningParameter parameter, std::int64_t value);

 private:
  TuningSnapshot switchTo(std::int64_t set);

  WheelBase& base_;
  std::optional<MenuPlace> meant_;
};

}  // namespace quorvane
