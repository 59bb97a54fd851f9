#pragma once

#include <deque>
#include <functional>
#include <string>

#include "support/mutex.h"
#include "support/thread.h"

namespace quorvane {

// Runs jobs one at a time, in the order added, on its own thread. The thread ends when the queue is
// empty, and a later job starts a new one. Any thread may add jobs. Jobs must not stop or destroy
// the queue.
class WorkQueue {
 public:
  using Job = std::function<void()>;

  // The name is the thread's.
  explicit WorkQueue(std::string name);
  // Calls stop().
  ~WorkQueue();
  WorkQueue(const WorkQueue&) = delete;
  WorkQueue& operator=(const WorkQueue&) = delete;

  // A job must not throw. Throws std::system_error when no thread can be started; the job is
  // dropped then, and the next add() tries again.
  void add(Job job);

  // Drops the jobs that have not begun and waits for the running one. Later jobs are dropped too.
  void stop();

 private:
  void run();

  const std::string name_;
  Mutex lock_;
  std::deque<Job> jobs_ QUORVANE_GUARDED_BY(lock_);
  bool stopped_ QUORVANE_GUARDED_BY(lock_) = false;
  bool working_ QUORVANE_GUARDED_BY(lock_) = false;  // the thread runs and will check jobs_ again
  Thread thread_ QUORVANE_GUARDED_BY(lock_);
};

}  // namespace quorvane
