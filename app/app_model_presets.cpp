#include <QPointer>
#include <algorithm>
#include <utility>

#include "app/app_model.h"
#include "app/messages.h"

namespace quorvane {

void AppModel::followPresets() {
  QObject::connect(&presets_, &SharedPresets::changed, this, &AppModel::changed);
  QObject::connect(&presets_, &SharedPresets::saveFailed, this, [this](const std::string& reason) {
    append(Messages::couldNotSavePresets(reason), true);
  });
  QObject::connect(&presets_, &SharedPresets::removalRefused, this, [this](const auto& preset) {
    if (deletedPreset_ == preset) deletedPreset_.reset();
    append(Messages::notDeleted(preset.name), true);
  });
}

void AppModel::saveCurrentAsPreset(const std::string& name) {
  if (!tuning_) return;
  TuningPreset preset = TuningPreset::capture(product(), name, *tuning_);
  preset.game = "Custom";
  presets_.change(PresetChange::add({std::move(preset)}));
  append(Messages::presetSaved(name));
}

void AppModel::deletePreset(const TuningPreset& preset) {
  const auto& presets = presets_.presets();
  const auto found = std::find_if(presets.begin(), presets.end(),
                                  [&](const TuningPreset& own) { return own.id == preset.id; });
  if (found == presets.end()) return;
  deletedPreset_ = *found;
  deletedPlace_ = PresetChange::placeOf(presets, static_cast<std::size_t>(found - presets.begin()));
  append(Messages::presetDeleted(deletedPreset_->name));
  presets_.change(PresetChange::remove(*deletedPreset_));
  emit changed();
}

void AppModel::undoDelete() {
  if (!deletedPreset_) return;
  const TuningPreset preset = *std::exchange(deletedPreset_, std::nullopt);
  append(Messages::presetBroughtBack(preset.name));
  presets_.change(PresetChange::insert(preset, deletedPlace_));
  emit changed();
}

void AppModel::importSettingsFile() {
  world_.panels.chooseFile({"Import settings", "Import", FilePanels::Content::settings, {}},
                           [model = QPointer(this)](const std::filesystem::path& file) {
                             if (model) model->importSettings(file);
                           });
}

void AppModel::importSettings(const std::filesystem::path& file) {
  std::vector<TuningPreset> presets;
  try {
    presets = PresetStore::importPresets(file);
  } catch (const std::runtime_error& error) {  // FileError, DecodingError
    append(Messages::couldNotImport(error.what()), true);
    return;
  }
  append(Messages::imported(presets, file, isConnected()));
  if (presets.empty()) return;
  presets_.change(PresetChange::add(std::move(presets)));
  emit changed();
  setRequestedSection("Presets");
}

}  // namespace quorvane
