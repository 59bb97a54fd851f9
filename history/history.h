#pragma once

#include <exception>
#include <filesystem>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "history/history_file.h"
#include "session/wheel_base.h"

namespace quorvane {

// What a batch of writes is meant to do.
struct HistoryIntent {
  HistoryAction action = HistoryAction::set;
  std::vector<ParameterValue> wanted = {};
  std::string detail = {};  // see HistoryRecord
  std::optional<UUID> reverses = {};
};

// One batch of writes in the history. Not thread-safe.
class HistoryBatch {
 public:
  // Ends the batch with its outcome, whose menu is filled in. Does nothing if the record is not in
  // the history. Blocks for the file; throws nothing.
  void end(std::vector<ValueReceipt> values, std::optional<std::string> error = std::nullopt);

  const HistoryRecord& record() const { return record_; }

  // Why the record or its outcome is not in the history; none when it is.
  const std::optional<std::string>& failure() const { return failure_; }

 private:
  friend class History;
  HistoryBatch(std::optional<std::filesystem::path> file, const WheelBase& base,
               HistoryRecord record);

  std::optional<std::filesystem::path> file_;
  const WheelBase& base_;
  HistoryRecord record_;
  std::optional<std::string> failure_;
};

// The histories of all bases, in a folder with a file for each. Every batch of writes that changes
// a base goes through it, of both programs: the record is on the disk before the first packet.
// Nothing is read from the base for it, and a history that cannot be written stops no batch.
//
// Thread-safe. The operations block for files: not for the window's main thread.
class History {
 public:
  // Without a folder, as for a user without a home directory, every batch fails to be recorded.
  // `program` is the name in the records.
  History(std::optional<std::filesystem::path> folder, std::string program);

  // In the user's state directory: "Quorvane/history"; and "Quorvane/simulated/history" for
  // simulated bases.
  static History ofUser(std::string program);
  static History ofSimulation(std::string program);

  // Records a batch, with the latest menu of the session. Throws nothing. The session must outlive
  // the batch.
  HistoryBatch begin(const WheelBase& base, const HistoryIntent& intent) const;

  // Records an operation as one batch, and returns its result. Its exception ends the batch and is
  // thrown on. Calls `whenEnded(batch)` in both cases.
  template <typename Operation, typename Ended>
  auto during(const WheelBase& base, const HistoryIntent& intent, const Operation& operation,
              const Ended& whenEnded) const {
    HistoryBatch batch = begin(base, intent);
    const auto end = [&](std::optional<std::string> error) {
      batch.end({}, std::move(error));
      whenEnded(std::as_const(batch));
    };
    try {
      if constexpr (std::is_void_v<decltype(operation())>) {
        operation();
        end(std::nullopt);
      } else {
        auto result = operation();
        end(std::nullopt);
        return result;
      }
    } catch (const std::exception& error) {
      end(error.what());
      throw;
    }
  }

  // Records values that the user changed with the base's own buttons, from one menu to another of
  // the same set. Leaves out what another record of the last minute has: a program that follows a
  // base sees the writes of other programs as changes, and several programs may follow one base.
  // Throws FileError; does nothing without a folder.
  void addWheelChanges(const HIDDeviceInfo& base, const TuningSnapshot& before,
                       const TuningSnapshot& after) const;

  // The file with the base's records; none without a folder. Does not block.
  std::optional<std::filesystem::path> fileOf(const HIDDeviceInfo& base) const;

  // The base's records. Empty without a folder. Throws FileError.
  HistoryContents read(const HIDDeviceInfo& base) const;

 private:
  HistoryRecord newRecord(const HIDDeviceInfo& base, HistoryAction action) const;

  std::optional<std::filesystem::path> folder_;
  std::string program_;
};

}  // namespace quorvane
