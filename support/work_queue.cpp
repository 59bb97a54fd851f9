#include "support/work_queue.h"

#include <utility>

namespace quorvane {

WorkQueue::WorkQueue(std::string name) : thread_(std::move(name), [this] { run(); }) {}

WorkQueue::~WorkQueue() { stop(); }

void WorkQueue::add(Job job) {
  {
    MutexLock held(lock_);
    if (stopped_) return;
    jobs_.push_back(std::move(job));
  }
  changed_.notifyOne();
}

void WorkQueue::stop() {
  std::deque<Job> dropped;
  {
    MutexLock held(lock_);
    stopped_ = true;
    dropped.swap(jobs_);
  }
  changed_.notifyOne();
  thread_.join();
}

void WorkQueue::run() {
  for (;;) {
    Job job;
    {
      MutexLock held(lock_);
      while (jobs_.empty() && !stopped_) changed_.wait(lock_);
      if (stopped_) return;
      job = std::move(jobs_.front());
      jobs_.pop_front();
    }
    job();
  }
}

}  // namespace quorvane
