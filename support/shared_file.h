#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "support/clock.h"
#include "support/file.h"
#include "support/unique_fd.h"

namespace quorvane {

// A file of the user that several processes change. A change is made under a lock: read the file
// afresh, compute the new content from it, replace the file durably, unlock. So no process undoes
// what another one wrote, as long as each makes all its changes in this way.
//
// The lock is an open-file-description lock on the file ".lock" in the directory of the data file,
// because the data file itself is replaced. A process that dies gives it up. The lock file stays.
// When the data file is a symbolic link, both are in the directory that it leads to, so that all
// names of one file share one lock. On a file system without locks, changes are made without: a
// file that was replaced meanwhile is noticed and read again, right before the replacement.
//
// A file that is there and cannot be read is never replaced.
//
// Reading needs no lock (readFileState). Any thread may call; all operations block for their input
// and output, and throw FileError.
class SharedFile {
 public:
  static constexpr Seconds longestWait{2.0};

  // The result of a change.
  struct Update {
    std::string content;

    // Keeps the old file beside the new one, as "NAME.SUFFIX". The old content is then read twice,
    // 20 ms apart, so that a file that another program is rewriting in place is not kept half
    // written.
    std::optional<std::string> keepOldAs;
  };

  // Gets the content, none when there is no file, and says what to replace it by; none to leave it
  // as it is. Called under the lock, and again if the file changes meanwhile. What it throws passes
  // through, and then nothing is written.
  using Change = std::function<std::optional<Update>(const std::optional<std::string>& content)>;

  struct Result {
    std::optional<FileVersion> version;  // of the file afterwards; none when there is no file
    std::filesystem::path kept;          // the old file's further name; empty when it is not kept
  };

  // The place of a waiting process: next in line for the lock, before any other that comes. Empty
  // at first.
  class Place {
   public:
    // Lets others pass.
    void leave() { lockFile_.reset(); }

   private:
    friend class SharedFile;
    UniqueFd lockFile_;
  };

  // The clock outlives this.
  explicit SharedFile(std::filesystem::path file, Clock& clock = Clock::system());

  // Waits up to `timeout` while other processes change the file, then throws; creates the file's
  // directory. After an error the file is as it was, unless only making the replacement durable
  // failed.
  Result change(const Change& change, Seconds timeout = longestWait) const;

  // The same, but never waits for other processes: none when one is changing the file. Then nothing
  // was done. Who tries again with the same place is not overtaken for ever; who does not, leaves
  // the place.
  std::optional<Result> tryChange(const Change& change, Place& place) const;

  // What change() throws when its time is over.
  FileError timeoutError() const;

 private:
  std::optional<Result> attempt(const std::filesystem::path& file, const Change& change) const;
  bool isSettled(const std::filesystem::path& file, const FileState& state) const;

  const std::filesystem::path file_;
  Clock& clock_;
};

}  // namespace quorvane
