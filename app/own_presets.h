#pragma once

#include <QObject>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "app/file_panels.h"
#include "app/log.h"
#include "app/shared_presets.h"

namespace quorvane {

// The user's presets and what the window does with them. Each action ends with a line in the log.
// Main thread only.
class OwnPresets final : public QObject {
  Q_OBJECT

 public:
  // Loads the presets. All references must outlive this object.
  OwnPresets(const PresetStore& store, FilePanels& panels, Log& log);

  const std::vector<TuningPreset>& all() const { return shared_.presets(); }

  // The preset that undo() would bring back; none if the last change was no deletion.
  const std::optional<TuningPreset>& deleted() const { return undo_.deleted; }

  // The preset that was added or brought back last here, of several the first; none before that.
  const std::optional<UUID>& added() const { return added_; }

  // The preset that the last import added, with its line in the log.
  struct Imported {
    TuningPreset preset;
    std::string line;
  };

  // None before an import, and after one of several presets.
  const std::optional<Imported>& imported() const { return imported_; }

  void add(const TuningPreset& preset);

  // These four can be taken back by undo(), until the next one of them. A preset that is not in the
  // list is left alone, except that `after` of edit() is always kept.
  void edit(const TuningPreset& before, const TuningPreset& after);
  void replaceValues(const TuningPreset& preset, const TuningPreset::Values& values);
  void move(const TuningPreset& preset, const PresetChange::Destination& destination);
  void remove(const TuningPreset& preset);

  // Adds a copy after the preset, or at the end for a built-in one. undo() removes it.
  void duplicate(const TuningPreset& preset);

  // Takes the last such change back. Does nothing without one.
  void undo();

  // Returns whether there were presets in the file. `isConnected` completes the line in the log.
  bool importFrom(const std::filesystem::path& file, bool isConnected);

  // Both ask for a file first. share() writes one preset with the name of its base.
  void exportAll();
  void share(const TuningPreset& preset, const std::string& base);

  // Writes the changes that wait for the file's lock (SharedPresets::finish).
  void finish() { shared_.finish(); }

 signals:
  void changed();

 private:
  // How to take the last change back.
  struct Undo {
    std::optional<PresetChange> change;
    std::string line;                     // for the log
    std::optional<TuningPreset> deleted;  // the preset that it brings back
  };

  std::vector<TuningPreset>::const_iterator find(const TuningPreset& preset) const;
  void change(const PresetChange& change, const std::string& line, Undo undo);

  template <typename Export>
  void exportTo(const FilePanels::Request& request, Export run);

  FilePanels& panels_;
  Log& log_;
  SharedPresets shared_;
  Undo undo_;
  std::optional<UUID> added_;
  std::optional<Imported> imported_;
};

}  // namespace quorvane
