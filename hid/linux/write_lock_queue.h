#pragma once

namespace quorvane {

// The write lock of a node, with a first-in-first-out queue of those that wait for it. Both are
// open-file-description locks on single bytes of the node: the kernel drops them when the opening
// is closed, however its program ends. docs/protocol.md documents the bytes for other programs.
//
// One thread at a time; nothing blocks.
class WriteLockQueue {
 public:
  // Locks the presence byte, which tells the others of this opening. `node` outlives the object.
  explicit WriteLockQueue(int node);

  // Moves up in the queue as far as possible. True when this opening holds the write lock, until
  // `leave`. True as well on a file system without locks.
  bool tryLock();

  // Releases the write lock or the place in the queue.
  void leave();

  // Whether other openings hold the presence byte; true as well when that is unknown.
  bool areOthersThere() const;

 private:
  int node_;
  int place_;     // the byte that is locked
  bool canLock_;  // whether the last attempt could lock at all
};

}  // namespace quorvane
