#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>

namespace quorvane {

// Decides whether the reader thread of a connection may batch reports or must read each as it
// arrives. A base sends a status report every millisecond: batching saves 19 of 20 wake-ups.
//
// The reader does not batch (is "prompt") during a hold(), and for the next `promptReports` reports
// after each hold and each report of interest. It counts reports, not time: while no reports
// arrive, a prompt reader causes no wake-ups anyway.
//
// A batching reader that gets no processor time for longer than the queue has room (63 reports in
// the kernel: 43 ms at 1 kHz) loses the newest reports; a prompt reader does so after 63 ms.
// Answers are never lost by batching, because a caller that waits for one holds the reader prompt.
// A lost status is repeated by the next report. A menu that the base sent without a request may be
// lost: it stays unknown until the base sends the next one, or until the menu is read, which
// happens before the next write (HIDPort::possibleLosses).
class ReadingPace {
 public:
  // How long to collect a batch: 20 reports at 1 kHz, with room for 63 in the queue. At most 30 ms,
  // scheduling delay of a busy machine included.
  static constexpr std::chrono::milliseconds gatherPause{20};

  // Half a second at 1 kHz: about the time between two steps of a user in the base's own menu.
  static constexpr int promptReports = 500;

  // Thread-safe. Each hold() keeps the reader prompt until a release(). When hold() returns true,
  // the reader may be collecting a batch: call HIDPort::hurry().
  [[nodiscard]] bool hold();
  void release();

  // For the reader thread only. Call restart() before the first report after opening, mayGather()
  // (true: may batch) before each read, and took() after each report.
  void restart();
  [[nodiscard]] bool mayGather();
  void took(bool ofInterest);

 private:
  bool isDue();

  std::atomic<std::uint64_t> holds_{0};     // calls of hold()
  std::atomic<std::uint64_t> releases_{0};  // calls of release()
  std::atomic<bool> gathering_{false};

  // Used by the reader thread only.
  std::uint64_t seenHolds_ = 0;
  int promptLeft_ = promptReports;
};

}  // namespace quorvane
