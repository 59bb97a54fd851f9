#pragma once

#include "hid/connection.h"
#include "support/clock.h"

namespace quorvane {

// Holds the base's write lock, among all programs that have it open. A write sends the whole menu
// back, so nobody else may write between the read that it was copied from and its read-back.
class WriteLock {
 public:
  // Blocks until it holds the lock. Throws FanatecError timeout after `timeout`, which names the
  // holder if that is known, and notConnected when the connection is closed or gets closed.
  WriteLock(HIDConnection& connection, Clock& clock, Seconds timeout);
  ~WriteLock() { connection_.endWriteLock(); }
  WriteLock(const WriteLock&) = delete;
  WriteLock& operator=(const WriteLock&) = delete;

 private:
  HIDConnection& connection_;
};

}  // namespace quorvane
