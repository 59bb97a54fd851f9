#pragma once

namespace quorvane {

// The write lock of a node, with a first-in-first-out queue of waiters. Both are
// open-file-description locks on single bytes of the node: the kernel releases them when the node
// is closed, however the program ends. docs/protocol.md documents the bytes for other programs.
//
// One thread at a time; nothing blocks.
class WriteLockQueue {
 public:
  // Takes a shared lock on the presence byte, so that others can detect this opening. `node` must
  // stay open while this object exists.
  explicit WriteLockQueue(int node);

  // Enters the queue, or moves up as far as possible. True when this opening holds the write lock,
  // until leave(). Also true on a file system without locks.
  bool tryLock();

  // Releases the write lock or the place in the queue.
  void leave();

  // Whether other openings hold the presence byte; also true when that is unknown.
  bool areOthersThere() const;

 private:
  int node_;
  int place_;     // the byte that this opening has locked
  bool canLock_;  // false if the last attempt failed for lack of locks
};

}  // namespace quorvane
