#pragma once

#include <QObject>
#include <QTimer>
#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "app/file_watch.h"
#include "presets/preset_change.h"
#include "presets/preset_store.h"

namespace quorvane {

// The user's presets as the window shows them: what the preset file holds, and the changes made
// here that could not be written yet. Follows what other programs write to the file.
//
// A change shows at once and is written at once, to the file as it is then. While another program
// has the file locked, writing is tried again by a timer, without ever waiting for the lock. A
// change that cannot be written stays in the list, and is written with the next one. A file that
// cannot be read is read again by a timer.
//
// Lives on the main thread. Signals are emitted from within the calls as well.
class SharedPresets final : public QObject {
  Q_OBJECT

 public:
  static constexpr std::chrono::milliseconds longestWait{2000};

  // Reads the file; a list that cannot be read is empty for now. The store outlives this.
  explicit SharedPresets(const PresetStore& store, std::chrono::milliseconds timeout = longestWait);

  const std::vector<TuningPreset>& presets() const { return shown_; }

  // Emits no changed() for the change itself.
  void change(const PresetChange& change);

  // Writes what waits for the lock, and waits up to 2 s for it. For the end of the program: what
  // waits then is lost with this.
  void finish();

 signals:
  // The list is another one: another program wrote to the file.
  void changed();

  void saveFailed(const std::string& reason);

  // The preset was not removed: another program has changed it.
  void removalRefused(const TuningPreset& preset);

 private:
  // Before a file that could not be read is read again; doubled from one attempt to the next.
  static constexpr std::chrono::milliseconds firstReadingPause{250};

  void write();
  void stopWaiting();
  void lookAgain();
  void adopt(PresetStore::Contents contents);
  void readLater();
  std::vector<TuningPreset> applyPending(std::vector<TuningPreset>& presets) const;

  const PresetStore& store_;
  const std::chrono::milliseconds timeout_;
  FileWatch watch_;
  std::vector<TuningPreset> stored_;                // as last read from the file
  std::optional<FileVersion> version_;              // of the file that stored_ is from
  std::vector<PresetChange> pending_;               // not written yet
  std::vector<TuningPreset> shown_;                 // stored_ with pending_ applied
  std::chrono::steady_clock::time_point deadline_;  // for the lock
  SharedFile::Place place_;                         // in line for the lock, while retry_ is active
  QTimer retry_;                                    // active while another program has the lock
  QTimer reading_;                                  // active while the file cannot be read
  std::chrono::milliseconds readingPause_ = firstReadingPause;  // the next one
};

}  // namespace quorvane
