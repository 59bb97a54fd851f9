#pragma once

#include "support/unique_fd.h"

namespace quorvane {

// Who comes to a node and goes, whatever program it is. One thread at a time; nothing blocks, but
// the end takes the kernel several milliseconds.
class NodeVisits {
 public:
  // Begins to look. `node` is open; its own opening is none.
  explicit NodeVisits(int node);

  // Whether somebody came or went since this was last asked, or came since the beginning and is
  // still there; true as well when that cannot be told.
  bool anySinceLastAsked();

 private:
  void count(unsigned events);

  UniqueFd events_;  // none: the system watches no more for this user
  bool areKnown_ = true;
  bool any_ = false;
  int there_ = 0;
};

}  // namespace quorvane
