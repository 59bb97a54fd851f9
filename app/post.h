#pragma once

#include <QMetaObject>
#include <functional>
#include <optional>
#include <string>
#include <system_error>
#include <utility>

#include "support/work_queue.h"

namespace quorvane {

// Queues a call for the object's thread; dropped if the object is destroyed first. Thread-safe.
inline void post(QObject* object, std::function<void()> what) {
  QMetaObject::invokeMethod(object, std::move(what), Qt::QueuedConnection);
}

// Puts a job on the queue. Returns an error message for the user if that fails.
inline std::optional<std::string> enqueue(WorkQueue& queue, WorkQueue::Job job) {
  try {
    queue.add(std::move(job));
    return std::nullopt;
  } catch (const std::system_error& error) {
    return error.what();
  }
}

}  // namespace quorvane
