#pragma once

#include "presets/preset_store.h"

namespace quorvane {

// The store that the window uses too. Throws FileError for a user who has no place for one.
const PresetStore& userPresetStore();

}  // namespace quorvane
