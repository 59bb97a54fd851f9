#include "cli/user_presets.h"

#include "support/user_directories.h"

namespace quorvane {
namespace {

void requirePlaceForPresets() {
  if (!userDataDirectory()) {
    throw FileError("presets.json", "You have no home directory to keep it in");
  }
}

}  // namespace

const PresetStore& userPresetStore() {
  requirePlaceForPresets();
  return PresetStore::shared();
}

const PresetStore& simulatedPresetStore() {
  requirePlaceForPresets();
  return PresetStore::simulated();
}

}  // namespace quorvane
