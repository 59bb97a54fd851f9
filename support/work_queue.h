#pragma once

#include <deque>
#include <functional>
#include <string>

#include "support/mutex.h"
#include "support/thread.h"

namespace quorvane {

// Runs jobs one at a time, in the order given, on a thread of its own, which is there while there
// is something to do. Any thread may add jobs; the queue belongs to one owner, which is not one of
// them.
class WorkQueue {
 public:
  using Job = std::function<void()>;

  // The name is the thread's.
  explicit WorkQueue(std::string name);
  // Stops.
  ~WorkQueue();
  WorkQueue(const WorkQueue&) = delete;
  WorkQueue& operator=(const WorkQueue&) = delete;

  // A job lets no exception out. Throws std::system_error when there is no thread to be had for it;
  // the job is dropped then, and the next one tries again.
  void add(Job job);

  // Drops the jobs that have not begun and waits for the one that has. Jobs added later are dropped
  // as well.
  void stop();

 private:
  void run();

  const std::string name_;
  Mutex lock_;
  std::deque<Job> jobs_ QUORVANE_GUARDED_BY(lock_);
  bool stopped_ QUORVANE_GUARDED_BY(lock_) = false;
  bool working_ QUORVANE_GUARDED_BY(lock_) = false;  // the thread will look at the jobs again
  Thread thread_ QUORVANE_GUARDED_BY(lock_);
};

}  // namespace quorvane
