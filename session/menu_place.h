#pragma once

#include <cstdint>

#include "protocol/tuning_snapshot.h"

namespace quorvane {

// The menu that a value is meant for: one set in one mode.
struct MenuPlace {
  std::int64_t slot = 0;
  bool isAdvanced = false;

  MenuPlace(std::int64_t setNumber, bool inAdvancedMode)
      : slot(setNumber), isAdvanced(inAdvancedMode) {}
  // The set and mode of a reported menu.
  MenuPlace(const TuningSnapshot& menu)  // NOLINT(google-explicit-constructor)
      : slot(menu.slot()), isAdvanced(menu.isAdvancedMode()) {}

  bool operator==(const MenuPlace&) const = default;
};

}  // namespace quorvane
