#pragma once

#include "hid/connection.h"
#include "support/clock.h"

namespace quorvane {

// RAII: holds the base's write lock, which all programs share. A write sends the whole menu, so no
// other program may write between the read that it is based on and the read-back.
class WriteLock {
 public:
  // Blocks until it holds the lock. Throws FanatecError timeout after `timeout`, with the name of
  // the holder if known, and notConnected when the connection is closed, also meanwhile.
  WriteLock(HIDConnection& connection, Clock& clock, Seconds timeout);
  ~WriteLock() { connection_.endWriteLock(); }
  WriteLock(const WriteLock&) = delete;
  WriteLock& operator=(const WriteLock&) = delete;

 private:
  HIDConnection& connection_;
};

}  // namespace quorvane
