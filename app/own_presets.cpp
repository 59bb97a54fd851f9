#include "app/own_presets.h"

#include <QPointer>
#include <algorithm>
#include <iterator>
#include <utility>

#include "presets/preset_copy.h"

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
    if (undo_.deleted == preset) undo_ = {};
    log_.append(Messages::notDeleted(preset.name), true);
  });
}

std::vector<TuningPreset>::const_iterator OwnPresets::find(const TuningPreset& preset) const {
  return std::find_if(all().begin(), all().end(),
                      [&](const TuningPreset& own) { return own.id == preset.id; });
}

void OwnPresets::change(const PresetChange& change, const std::string& line, Undo undo) {
  undo_ = std::move(undo);
  log_.append(line);
  shared_.change(change);
  emit changed();
}

void OwnPresets::add(const TuningPreset& preset) {
  added_ = preset.id;
  shared_.change(PresetChange::add({preset}));
  log_.append(Messages::presetSaved(preset.name));
}

void OwnPresets::edit(const TuningPreset& before, const TuningPreset& after) {
  if (after == before) return;
  change(PresetChange::replace(before, after), Messages::presetEdited(before.name, after.name),
         {PresetChange::replace(after, before), Messages::formerTexts(before.name), {}});
}

void OwnPresets::replaceValues(const TuningPreset& preset, const TuningPreset::Values& values) {
  const auto found = find(preset);
  if (found == all().end()) return;
  const TuningPreset& before = *found;
  TuningPreset after = before;
  after.values = values;
  change(PresetChange::replace(before, after), Messages::valuesReplaced(before.name),
         {PresetChange::replace(after, before), Messages::formerValues(before.name), {}});
}

void OwnPresets::duplicate(const TuningPreset& preset) {
  const TuningPreset copy = copyOf(preset, copyName(preset.name, all()));
  added_ = copy.id;
  const auto found = find(preset);
  const auto after = static_cast<std::size_t>(found - all().begin()) + 1;
  change(found == all().end() ? PresetChange::add({copy})
                              : PresetChange::insert(copy, PresetChange::placeOf(all(), after)),
         Messages::presetDuplicated(preset.name, copy.name),
         {PresetChange::remove(copy), Messages::copyRemoved(copy.name), {}});
}

void OwnPresets::move(const TuningPreset& preset, const PresetChange::Destination& destination) {
  using Destination = PresetChange::Destination;
  const auto found = find(preset);
  if (found == all().end()) return;
  const TuningPreset& moved = *found;
  Destination former{Destination::Where::first, {}};
  if (found != all().begin()) former = {Destination::Where::after, *std::prev(found)};
  const PresetChange move = PresetChange::move(moved, destination);
  std::vector<TuningPreset> after = all();
  move.apply(after);
  if (after == all()) return;
  const auto place = std::find(after.begin(), after.end(), moved) - after.begin() + 1;
  change(move, Messages::presetMoved(moved.name, static_cast<std::size_t>(place), after.size()),
         {PresetChange::move(moved, former), Messages::movedBack(moved.name), {}});
}

void OwnPresets::remove(const TuningPreset& preset) {
  const auto found = find(preset);
  if (found == all().end()) return;
  const TuningPreset& removed = *found;
  const auto place = PresetChange::placeOf(all(), static_cast<std::size_t>(found - all().begin()));
  change(
      PresetChange::remove(removed), Messages::presetDeleted(removed.name),
      {PresetChange::insert(removed, place), Messages::presetBroughtBack(removed.name), removed});
}

void OwnPresets::undo() {
  if (!undo_.change) return;
  const Undo undo = std::exchange(undo_, {});
  if (undo.deleted) added_ = undo.deleted->id;
  change(*undo.change, undo.line, {});
}

bool OwnPresets::importFrom(const std::filesystem::path& file, bool isConnected) {
  std::vector<TuningPreset> presets;
  try {
    presets = PresetStore::importPresets(file);
  } catch (const std::runtime_error& error) {  // FileError, DecodingError
    log_.append(Messages::couldNotImport(error.what()), true);
    return false;
  }
  const std::string line = Messages::imported(presets, file, isConnected);
  imported_.reset();
  if (presets.size() == 1) imported_ = Imported{presets.front(), line};
  log_.append(line);
  if (presets.empty()) return false;
  added_ = presets.front().id;
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
