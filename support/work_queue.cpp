#include "support/work_queue.h"

#include <utility>

namespace quorvane {

WorkQueue::WorkQueue(std::string name) : name_(std::move(name)) {}

WorkQueue::~WorkQueue() { stop(); }

void WorkQueue::add(Job job) {
  Thread ended;  // joined on return, after the lock is released
  MutexLock held(lock_);
  if (stopped_) return;
  if (!working_) {
    ended = std::exchange(thread_, Thread(name_, [this] { run(); }));
    working_ = true;
  }
  jobs_.push_back(std::move(job));
}

void WorkQueue::stop() {
  std::deque<Job> dropped;
  Thread last;
  MutexLock held(lock_);
  stopped_ = true;
  dropped.swap(jobs_);
  last = std::exchange(thread_, Thread());
}

void WorkQueue::run() {
  for (;;) {
    Job job;
    {
      MutexLock held(lock_);
      if (jobs_.empty()) {
        working_ = false;
        return;
      }
      job = std::move(jobs_.front());
      jobs_.pop_front();
    }
    job();
  }
}

}  // namespace quorvane
