#pragma once

#include <cstdint>

#include "hid/connection.h"
#include "presets/tuning_preset.h"
#include "protocol/tuning_snapshot.h"

namespace quorvane {

// Another program that has the same base open, with its turns at writing.
class OtherProgram {
 public:
  explicit OtherProgram(HIDDeviceInfo base) : connection_(std::move(base)) {
    connection_.open(false);
  }

  // Whether it is its turn now; else it stands in line.
  bool askForTurn() { return connection_.tryWriteLock(); }
  void endTurn() { connection_.endWriteLock(); }

  // Writes one value of a menu, and reads nothing back.
  void write(const TuningSnapshot& menu, const ParameterValue& what);
  void selectSet(std::int64_t slot);

  // However it ends, its turn goes with it.
  void leave();

 private:
  HIDConnection connection_;
};

}  // namespace quorvane
