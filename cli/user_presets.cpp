#include "cli/user_presets.h"

#include "support/user_directories.h"

namespace quorvane {

const PresetStore& userPresetStore() {
  if (!userDataDirectory()) {
    throw FileError("presets.json", "You have no home directory to keep it in");
  }
  return PresetStore::shared();
}

}  // namespace quorvane
