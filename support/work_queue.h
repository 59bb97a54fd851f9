#pragma once

#include <deque>
#include <functional>
#include <string>

#include "support/mutex.h"
#include "support/thread.h"

namespace quorvane {

// Runs jobs one at a time, in the order given, on a thread of its own. Any thread may add jobs; the
// queue belongs to one owner, which is not one of them.
class WorkQueue {
 public:
  using Job = std::function<void()>;

  explicit WorkQueue(std::string name);
  // Stops.
  ~WorkQueue();
  WorkQueue(const WorkQueue&) = delete;
  WorkQueue& operator=(const WorkQueue&) = delete;

  // A job lets no exception out.
  void add(Job job);

  // Drops the jobs that have not begun and waits for the one that has. Jobs added later are dropped
  // as well.
  void stop();

 private:
  void run();

  Mutex lock_;
  Condition changed_;
  std::deque<Job> jobs_ QUORVANE_GUARDED_BY(lock_);
  bool stopped_ QUORVANE_GUARDED_BY(lock_) = false;
  Thread thread_;
};

}  // namespace quorvane
