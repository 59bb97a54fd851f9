#pragma once

#include <cstdint>
#include <optional>

#include "session/wheel_base.h"

namespace quorvane {

// Writes values that belong together, one by one, into one set. When another program or a hand on
// the wheel makes another set active in between, the rest is refused instead of written there.
class MenuWriter {
 public:
  // The values are meant for the set and the mode of `menu`; without one, for whichever is active.
  // The base must outlive this.
  MenuWriter(WheelBase& base, std::optional<TuningSnapshot> menu);

  // Writes and verifies one value, and returns what was read back; a value of `slot` goes on to
  // that set. Throws what WheelBase::set throws.
  TuningSnapshot write(TuningParameter parameter, std::int64_t value);

 private:
  WheelBase& base_;
  std::optional<TuningSnapshot> menu_;
};

}  // namespace quorvane
