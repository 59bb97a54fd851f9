#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>

namespace quorvane {

// Decides whether the reader of a connection may gather reports or has to take each as it arrives.
// A base sends a status report every millisecond: gathered, they cost a wake-up for twenty of them.
//
// The reader is prompt while anybody holds it to that, and for the next `promptReports` reports
// after each hold and each report of interest. It counts reports, not time: a base that is silent
// costs a prompt reader nothing.
//
// A reader that gathers and is kept from the processor for longer than the queue has room (63
// reports in the kernel: 43 ms at 1 kHz) loses the newest reports, as a prompt one does after 63
// ms. No answer can be among them, because whoever waits for one holds the reader to being prompt.
// A status is repeated by the next report. A menu that the base sent unasked can be: it stays
// unknown until the base sends the next one, or until the menu is read, as it is before the next
// write (HIDPort::possibleLosses).
class ReadingPace {
 public:
  // How long reports are gathered: 20 of a queue of 63 at 1 kHz, and 30 ms at most with what a busy
  // machine adds.
  static constexpr std::chrono::milliseconds gatherPause{20};

  // Half a second at 1 kHz: as long as somebody who turns the base's own menu thinks between two
  // steps.
  static constexpr int promptReports = 500;

  // Any thread. `hold` keeps the reader prompt until its `release`. True: the reader may be at
  // gathering now, and has to be told to hurry.
  [[nodiscard]] bool hold();
  void release();

  // The reader's. `restart` comes before the first report of an opening, `mayGather` before each
  // read, `took` after each report.
  void restart();
  [[nodiscard]] bool mayGather();
  void took(bool ofInterest);

 private:
  bool isDue();

  std::atomic<std::uint64_t> holds_{0};     // begun
  std::atomic<std::uint64_t> releases_{0};  // of these, ended
  std::atomic<bool> gathering_{false};

  // The reader's own.
  std::uint64_t seenHolds_ = 0;
  int promptLeft_ = promptReports;
};

}  // namespace quorvane
