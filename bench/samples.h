#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <ctime>
#include <vector>

namespace quorvane {

// Repeated measurements of a duration, in nanoseconds.
class Samples {
 public:
  void add(std::chrono::steady_clock::duration duration) {
    values_.push_back(std::chrono::duration<double, std::nano>(duration).count());
  }

  // The quantile of the samples, 0 to 1. Reorders them. Precondition: there is a sample.
  double quantile(double fraction) {
    const auto index = static_cast<std::ptrdiff_t>(fraction * static_cast<double>(values_.size()));
    const auto last = static_cast<std::ptrdiff_t>(values_.size()) - 1;
    const auto position = values_.begin() + std::min(index, last);
    std::nth_element(values_.begin(), position, values_.end());
    return *position;
  }

 private:
  std::vector<double> values_;
};

// Runs `what` and adds its duration.
template <typename What>
void timed(Samples& samples, What what) {
  const auto begin = std::chrono::steady_clock::now();
  what();
  samples.add(std::chrono::steady_clock::now() - begin);
}

// The time that all threads of this process have worked so far.
inline std::chrono::nanoseconds processorTime() {
  timespec time{};
  ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

// Runs `what` and adds the time that this process has worked for it, which depends less on what
// else the machine does.
template <typename What>
void timedOnProcessor(Samples& samples, What what) {
  const auto begin = processorTime();
  what();
  samples.add(processorTime() - begin);
}

}  // namespace quorvane
