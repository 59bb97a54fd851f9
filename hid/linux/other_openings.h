#pragma once

#include <functional>

#include "support/unique_fd.h"

namespace quorvane {

// Whether another program has, or may have had, a node open. Does not count openings, because the
// kernel merges identical events. One thread at a time. Nothing blocks, but the destructor takes
// several milliseconds in the kernel, and the first mayHaveBeenAny() scans all processes.
class OtherOpenings {
 public:
  // Whether the node may be open other than by this opening.
  using Look = std::function<bool()>;

  // Starts to watch the open `node`. This opening does not count; others of this process do. `look`
  // finds programs that had the node open before; by default it scans the processes (NodeHolders).
  explicit OtherOpenings(int node, Look look = {});

  // Whether another program opened or closed the node since the start, or had it open before; also
  // true when that is unknown. Once true, it stays true.
  bool mayHaveBeenAny();

 private:
  bool wasAnybodyThere();
  bool hasAnybodyCome();

  UniqueFd events_;  // inotify; none if the user's limit is reached
  bool isWatched_ = false;
  Look look_;  // empty once used
  bool any_ = false;
};

}  // namespace quorvane
