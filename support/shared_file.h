#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "support/clock.h"
#include "support/file.h"
#include "support/unique_fd.h"

namespace quorvane {

// A file of the user that several processes change. Each change takes a lock, reads the file again,
// computes the new content from it, replaces the file durably and unlocks. So no update is lost, as
// long as every process makes its changes in this way.
//
// The lock is an open-file-description lock on the file ".lock" in the directory of the data file,
// because the data file itself is replaced. A process that dies releases the lock. The lock file is
// never removed. When the data file is a symbolic link, both files are in the directory of its
// target, so that all names of one file share one lock. On a file system without locks, changes are
// made without one: right before the replacement, the file's version is checked, and a changed file
// is read again.
//
// A file that exists and cannot be read is never replaced.
//
// Reading needs no lock: use readFileState(). Thread-safe; all operations block for file input and
// output, and throw FileError.
class SharedFile {
 public:
  static constexpr Seconds longestWait{2.0};

  // The result of a change.
  struct Update {
    std::string content;

    // A suffix to keep the old file under, as "NAME.SUFFIX". The old content is then read twice,
    // 20 ms apart, so that no half-written file is kept while another program rewrites it in place.
    std::optional<std::string> keepOldAs;

    // Called once the file is replaced, with the lock still held. Must not throw.
    std::function<void()> whenReplaced = {};
  };

  // Receives the content, none when there is no file, and returns the new one, none to leave the
  // file unchanged. Called with the lock held, and again if the file changes meanwhile. Its
  // exceptions pass through to the caller; nothing is written then.
  using Change = std::function<std::optional<Update>(const std::optional<std::string>& content)>;

  struct Result {
    std::optional<FileVersion> version;  // after the change; none when there is no file
    std::filesystem::path kept;          // the path of the kept old file; empty when none is kept
  };

  // A place in the queue for the lock, kept from one tryChange() to the next: only its holder can
  // get the lock next. Empty at first.
  class Place {
   public:
    // Leaves the queue.
    void leave() { lockFile_.reset(); }

   private:
    friend class SharedFile;
    UniqueFd lockFile_;
  };

  // The clock must outlive this.
  explicit SharedFile(std::filesystem::path file, Clock& clock = Clock::system());

  // Waits up to `timeout` for other processes that change the file, then throws timeoutError().
  // Creates the file's directory. After an error the file is unchanged, unless only syncing the
  // directory failed.
  Result change(const Change& change, Seconds timeout = longestWait) const;

  // Like change(), but does not wait: none, and nothing written, when another process is changing
  // the file. Retry with the same place, so that no other process gets the lock first every time;
  // to give up, call Place::leave().
  std::optional<Result> tryChange(const Change& change, Place& place) const;

  // Whether an appended text must survive a crash of the system.
  enum class Sync { no, yes };

  // Appends whole lines in one write, under the same lock. If the file does not end with a line
  // feed, as after a crash during an earlier append, one is written before them. Creates the file
  // and its directory. Waits like change(). After an error, the file may end with a part of the
  // lines.
  Result append(std::string_view lines, Sync sync, Seconds timeout = longestWait) const;

  // What change() and append() throw on timeout.
  FileError timeoutError() const;

 private:
  template <typename Attempt>
  Result persist(const Attempt& attempt, Seconds timeout) const;
  std::optional<Result> tryAppend(std::string_view lines, Sync sync, Place& place) const;
  std::optional<Result> attempt(const std::filesystem::path& file, const Change& change) const;
  bool isSettled(const std::filesystem::path& file, const FileState& state) const;

  const std::filesystem::path file_;
  Clock& clock_;
};

}  // namespace quorvane
