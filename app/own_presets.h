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

  // The last deleted preset, for undoDelete(); none before a deletion and after undoDelete().
  const std::optional<TuningPreset>& deleted() const { return deleted_; }

  void add(const TuningPreset& preset);
  void remove(const TuningPreset& preset);
  void undoDelete();

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
  template <typename Export>
  void exportTo(const FilePanels::Request& request, Export run);

  FilePanels& panels_;
  Log& log_;
  SharedPresets shared_;
  std::optional<TuningPreset> deleted_;
  PresetChange::Place deletedPlace_;
};

}  // namespace quorvane
