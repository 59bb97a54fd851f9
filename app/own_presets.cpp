#include "app/own_presets.h"

#include <QPointer>
#include <algorithm>
#include <utility>

namespace quorvane {
namespace {

// A file name that every file system accepts and that a file panel does not take for a path.
std::string fileName(std::string name) {
  std::replace(name.begin(), name.end(), '/', '-');
  return name;
}

}  // namespace

OwnPresets::OwnPresets(const PresetStore& store, FilePanels& panels, Log& log)
    : panels_(panels), log_(log), shared_(store) {
  connect(&shared_, &SharedPresets::changed, this, &OwnPresets::changed);
  connect(&shared_, &SharedPresets::saveFailed, this, [this](const std::string& reason) {
    log_.append(Messages::couldNotSavePresets(reason), true);
  });
  connect(&shared_, &SharedPresets::versionNotKept, this, [this](const std::string& reason) {
    log_.append(Messages::versionNotKept(reason), true);
  });
  connect(&shared_, &SharedPresets::removalRefused, this, [this](const TuningPreset& preset) {
    if (deleted_ == preset) deleted_.reset();
    log_.append(Messages::notDeleted(preset.name), true);
  });
}

void OwnPresets::add(const TuningPreset& preset) {
  shared_.change(PresetChange::add({preset}));
  log_.append(Messages::presetSaved(preset.name));
}

void OwnPresets::remove(const TuningPreset& preset) {
  const auto found = std::find_if(all().begin(), all().end(),
                                  [&](const TuningPreset& own) { return own.id == preset.id; });
  if (found == all().end()) return;
  deleted_ = *found;
  deletedPlace_ = PresetChange::placeOf(all(), static_cast<std::size_t>(found - all().begin()));
  log_.append(Messages::presetDeleted(deleted_->name));
  shared_.change(PresetChange::remove(*deleted_));
  emit changed();
}

void OwnPresets::undoDelete() {
  if (!deleted_) return;
  const TuningPreset preset = *std::exchange(deleted_, std::nullopt);
  log_.append(Messages::presetBroughtBack(preset.name));
  shared_.change(PresetChange::insert(preset, deletedPlace_));
  emit changed();
}

bool OwnPresets::importFrom(const std::filesystem::path& file, bool isConnected) {
  std::vector<TuningPreset> presets;
  try {
    presets = PresetStore::importPresets(file);
  } catch (const std::runtime_error& error) {  // FileError, DecodingError
    log_.append(Messages::couldNotImport(error.what()), true);
    return false;
  }
  log_.append(Messages::imported(presets, file, isConnected));
  if (presets.empty()) return false;
  shared_.change(PresetChange::add(std::move(presets)));
  emit changed();
  return true;
}

// `run` writes the file and returns the text for the log.
template <typename Export>
void OwnPresets::exportTo(const FilePanels::Request& request, Export run) {
  panels_.chooseDestination(request,
                            [self = QPointer(this), run](const std::filesystem::path& file) {
                              if (!self) return;
                              try {
                                self->log_.append(run(*self, file));
                              } catch (const FileError& error) {
                                self->log_.append(Messages::exportFailed(error.what()), true);
                              }
                            });
}

void OwnPresets::exportAll() {
  exportTo({"Export presets", "Export", FilePanels::Content::presets, "quorvane-presets.json"},
           [](const OwnPresets& self, const std::filesystem::path& file) {
             PresetStore::exportPresets(self.all(), file);
             return Messages::exportedPresets(self.all().size(), file);
           });
}

void OwnPresets::share(const TuningPreset& preset, const std::string& base) {
  exportTo({"Share settings", "Export", FilePanels::Content::settings,
            fileName(preset.name) + "." + std::string(SettingsShareFile::fileExtension)},
           [preset, base](const OwnPresets& /*self*/, const std::filesystem::path& file) {
             PresetStore::exportShare(preset, base, file);
             return Messages::exportedSettings(file);
           });
}

}  // namespace quorvane
