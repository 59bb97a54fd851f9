#pragma once

#include "presets/preset_store.h"

namespace quorvane {

// The preset stores, shared with the window: the user's own, and a separate one for runs with
// simulated bases. Throw FileError for a user without a place for one.
const PresetStore& userPresetStore();
const PresetStore& simulatedPresetStore();

}  // namespace quorvane
