#pragma once

#include <functional>

#include "support/unique_fd.h"

namespace quorvane {

// Whether anybody else has, or may have had, a node open, whatever program it is. Visits are not
// counted, because the kernel merges events that are alike: whoever may have come stays a reason
// for care. One thread at a time; nothing blocks, but the end takes the kernel several
// milliseconds, and the first question a look through all processes.
class NodeVisits {
 public:
  // Whether somebody besides this opening may have the node open.
  using Look = std::function<bool()>;

  // Begins to watch. `node` is open; its own opening is none. Other openings by this process are.
  // Who was there before is looked for among the processes (NodeHolders) unless another look is
  // given.
  explicit NodeVisits(int node, Look look = {});

  // Whether somebody came or went since the beginning, or was there before; true as well when that
  // cannot be told. Once true, always true.
  bool mayHaveBeenAny();

 private:
  bool wasAnybodyThere();
  bool hasAnybodyCome();

  UniqueFd events_;  // none: the system watches no more for this user
  bool isWatched_ = false;
  Look look_;  // until it was used
  bool any_ = false;
};

}  // namespace quorvane
