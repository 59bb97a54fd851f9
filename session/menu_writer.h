#pragma once

#include <cstdint>
#include <optional>

#include "session/menu_place.h"
#include "session/wheel_base.h"

namespace quorvane {

// Writes several values one by one into the same set. Throws instead of writing when the base is in
// another set: because another program or the user switched it, or because it ignored a switch
// requested here.
class MenuWriter {
 public:
  // The values are for the set and mode of `menu`; without it, for the active set. The base must
  // outlive this.
  MenuWriter(WheelBase& base, const std::optional<TuningSnapshot>& menu);

  // Writes and verifies one value, and returns the menu read back. A value of `slot` switches the
  // set; later values are for the requested set, even if the switch fails. Throws what
  // WheelBase::set() throws. For `slot` also throws outOfRange, before anything is sent, and
  // writeIgnored when the base still reports another set.
  TuningSnapshot write(TuningParameter parameter, std::int64_t value);

 private:
  TuningSnapshot switchTo(std::int64_t set);

  WheelBase& base_;
  std::optional<MenuPlace> meant_;
};

}  // namespace quorvane
