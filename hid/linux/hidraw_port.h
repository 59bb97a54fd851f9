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

// An open hidraw node, or anything that behaves like one (non-blocking, one report a read).
class HidrawPort final : public HIDPort {
 public:
  // How many reports the kernel keeps for each opening of a node. It drops the newest then.
  static constexpr int queueLength = 63;

  // Lets reports gather: blocks for a while, or until the descriptor is readable (true).
  using Pause = std::function<bool(int signal)>;

  // `numbered`: the device's reports begin with their ID. The pause lasts
  // ReadingPace::gatherPause unless another one is given.
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
  EventFd signal_;  // to look whether the port was interrupted, or has to hurry
  std::atomic<bool> interrupted_{false};
  std::atomic<std::uint64_t> possibleLosses_{0};
  // The reader's own.
  bool tookAny_ = false;  // since it let reports gather
  int taken_ = 0;         // since the queue was empty
  WriteLockQueue writeQueue_;
  std::optional<OtherOpenings> others_;
  bool mayHaveCompany_ = false;  // the writing thread's own
};

}  // namespace quorvane
