#pragma once

#include "presets/preset_store.h"

namespace quorvane {

// The stores that the window uses too: the user's own, and the one beside it for runs with
// simulated bases. Throw FileError for a user who has no place for one.
const PresetStore& userPresetStore();
const PresetStore& simulatedPresetStore();

}  // namespace quorvane
