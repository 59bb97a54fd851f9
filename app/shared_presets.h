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

// The user's presets as the window shows them: the content of the preset file plus local changes
// that are not written yet. Watches the file for changes by other programs.
//
// A change is shown and written at once, merged into the current content of the file. While another
// program has the file locked, a timer retries the write; only finish() blocks for the lock. A
// change that cannot be written stays in the list and is written with the next one. A file that
// cannot be read is retried by a timer.
//
// Main thread only. Signals may also be emitted from within the calls.
class SharedPresets final : public QObject {
  Q_OBJECT

 public:
  static constexpr std::chrono::milliseconds longestWait{2000};

  // Reads the file; while it cannot be read, the list is empty. `timeout` is how long a change
  // retries for the lock. The store must outlive this object.
  explicit SharedPresets(const PresetStore& store, std::chrono::milliseconds timeout = longestWait);

  const std::vector<TuningPreset>& presets() const { return shown_; }

  // Applies and writes a change. Does not emit changed() for the change itself.
  void change(const PresetChange& change);

  // Writes the changes that wait for the lock; blocks up to 2 s for it. For the end of the program:
  // changes that are still not written are lost.
  void finish();

 signals:
  // The list has changed because another program wrote to the file.
  void changed();

  void saveFailed(const std::string& reason);

  // A change was written, but the content before it could not be kept as a former version.
  void versionNotKept(const std::string& reason);

  // The preset was not removed, because another program has changed it.
  void removalRefused(const TuningPreset& preset);

 private:
  // First retry interval for a file that cannot be read; doubled with each attempt.
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
  std::vector<PresetChange> pending_;               // changes not written yet
  std::vector<TuningPreset> shown_;                 // stored_ with pending_ applied
  std::chrono::steady_clock::time_point deadline_;  // for getting the lock
  SharedFile::Place place_;                         // in the lock queue, while retry_ is active
  QTimer retry_;                                    // active while another program has the lock
  QTimer reading_;                                  // active while the file cannot be read
  std::chrono::milliseconds readingPause_ = firstReadingPause;  // until the next attempt
};

}  // namespace quorvane
