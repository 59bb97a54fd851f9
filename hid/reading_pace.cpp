#include "hid/reading_pace.h"

namespace quorvane {

bool ReadingPace::hold() {
  holds_.fetch_add(1);
  return gathering_.load();
}

void ReadingPace::release() { releases_.fetch_add(1); }

void ReadingPace::restart() {
  gathering_.store(false);
  promptLeft_ = promptReports;
}

bool ReadingPace::mayGather() {
  const bool gathers = gathering_.load(std::memory_order_relaxed);
  bool may = isDue();
  if (may == gathers) return may;
  gathering_.store(may);
  // A hold() just before the store returned false, so look for it once more.
  if (may && !isDue()) {
    may = false;
    gathering_.store(false);
  }
  return may;
}

void ReadingPace::took(bool ofInterest) {
  if (ofInterest) {
    promptLeft_ = promptReports;
  } else if (promptLeft_ > 0) {
    --promptLeft_;
  }
}

bool ReadingPace::isDue() {
  const std::uint64_t holds = holds_.load();
  if (holds != seenHolds_) {
    seenHolds_ = holds;
    promptLeft_ = promptReports;
  }
  return promptLeft_ == 0 && releases_.load() == holds;
}

}  // namespace quorvane
