#pragma once

#include <cstdint>

#include "hid/connection.h"
#include "presets/tuning_preset.h"
#include "protocol/tuning_snapshot.h"

namespace quorvane {

// Another program that has the same base open and takes part in the write lock queue.
class OtherProgram {
 public:
  explicit OtherProgram(HIDDeviceInfo base) : connection_(std::move(base)) {
    connection_.open(false);
  }

  // Whether it holds the write lock now. If not, it is in the queue.
  bool askForWriteLock() { return connection_.tryWriteLock(); }
  void releaseWriteLock() { connection_.endWriteLock(); }

  // Writes one value of a menu, without a read-back.
  void write(const TuningSnapshot& menu, const ParameterValue& what);
  void selectSet(std::int64_t slot);

  // Closes the base, which releases the write lock.
  void leave();

 private:
  HIDConnection connection_;
};

}  // namespace quorvane
