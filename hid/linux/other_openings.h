#pragma once

#include <functional>

#include "support/unique_fd.h"

namespace quorvane {

// Whether another program has, or may have had, a node open. Openings are not counted, because the
// kernel merges events that are alike. One thread at a time; nothing blocks, but the destructor
// takes the kernel several milliseconds, and the first question a look through all processes.
class OtherOpenings {
 public:
  // Whether somebody besides this opening may have the node open.
  using Look = std::function<bool()>;

  // Starts to watch the open `node`. Its own opening does not count; others by this process do.
  // Programs that had it open before are searched for among the processes (NodeHolders), unless
  // `look` is given.
  explicit OtherOpenings(int node, Look look = {});

  // Whether another program opened or closed the node since the start, or had it open before; true
  // as well when that is unknown. Stays true once it is.
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
