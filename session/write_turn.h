#pragma once

#include "hid/connection.h"
#include "support/clock.h"

namespace quorvane {

// The turn at writing to a base, among all programs that have it open, for as long as this lives: a
// write sends the whole menu back, so nobody else may write between the reading that it was copied
// from and the one that proves it.
class WriteTurn {
 public:
  // Blocks until it has the turn. Throws FanatecError timeout, which names the program that has it
  // where that can be told, when it does not let go for that long, and notConnected when the
  // connection is closed or gets closed meanwhile.
  WriteTurn(HIDConnection& connection, Clock& clock, Seconds timeout);
  ~WriteTurn() { connection_.endWriteTurn(); }
  WriteTurn(const WriteTurn&) = delete;
  WriteTurn& operator=(const WriteTurn&) = delete;

 private:
  HIDConnection& connection_;
};

}  // namespace quorvane
