#pragma once

namespace quorvane {

// The line in which those who have a node open wait for their turn at writing to it: advisory locks
// on single bytes of the node, which belong to an opening of it and go with that, however its
// program ends. docs/protocol.md tells other programs of them.
//
// One thread at a time; nothing blocks.
class WriteLine {
 public:
  // Shows to the others that this opening is there. `node` stays open as long as this.
  explicit WriteLine(int node);

  // Moves up as far as it goes; true at the head, where it stays until `leave`. Where locks cannot
  // be had, there is no line and it is everybody's turn.
  bool tryTurn();

  // Gives up the turn or the place in the line.
  void leave();

  // Whether others are there; true as well when that cannot be told.
  bool areOthersThere() const;

 private:
  int node_;
  int place_;     // the byte that is locked
  bool canLock_;  // the last time it tried
};

}  // namespace quorvane
