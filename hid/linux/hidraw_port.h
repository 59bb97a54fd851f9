#pragma once

#include <atomic>
#include <functional>
#include <optional>

#include "hid/linux/other_openings.h"
#include "hid/linux/write_lock_queue.h"
#include "hid/port.h"
#include "support/event_fd.h"
#include "support/unique_fd.h"

namespace quorvane {

// An open hidraw node, or a file descriptor like one (non-blocking, one report per read).
class HidrawPort final : public HIDPort {
 public:
  // The size of the kernel's report queue for each open node. When it is full, the kernel drops new
  // reports.
  static constexpr int queueLength = 63;

  // Waits while a batch collects. Returns true early when the file descriptor `signal` is readable.
  using Pause = std::function<bool(int signal)>;

  // `numbered`: the device uses report IDs. The default `pause` waits ReadingPace::gatherPause.
  HidrawPort(UniqueFd node, bool numbered, Pause pause = gatherPause);

  ReadResult read(std::span<std::uint8_t> buffer) override;
  ReadResult readBatched(std::span<std::uint8_t> buffer) override;
  void interrupt() override;
  void hurry() override { signal_.set(); }
  std::uint64_t possibleLosses() const override { return possibleLosses_; }
  HIDReturn write(std::uint8_t reportID, ByteView data) override;
  HIDReturn getReport(HIDReportKind kind, std::uint8_t reportID, std::span<std::uint8_t> buffer,
                      std::size_t& length) override;
  bool tryWriteLock() override;
  void endWriteLock() override { writeQueue_.leave(); }
  std::optional<NodeHolder> writeLockHolder() override;
  void watchForOthers() override;
  bool othersMayHaveWritten() override;

 private:
  static bool gatherPause(int signal);

  bool hasLeft() const;
  bool waitForReport();
  void letGather();
  std::optional<ReadResult> take(std::span<std::uint8_t> buffer);

  UniqueFd node_;
  bool numbered_;
  Pause pause_;
  EventFd signal_;  // wakes the reader for interrupt() and hurry()
  std::atomic<bool> interrupted_{false};
  std::atomic<std::uint64_t> possibleLosses_{0};
  // Used by the reader thread only.
  bool tookAny_ = false;  // a report was read since the last pause
  int taken_ = 0;         // reports read since the queue was last empty
  WriteLockQueue writeQueue_;
  std::optional<OtherOpenings> others_;
  bool mayHaveCompany_ =
      false;  // result of othersMayHaveWritten(); used by the writing thread only
};

}  // namespace quorvane
