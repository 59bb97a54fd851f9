#include "simulator/simbase/event_log.h"

#include <cerrno>
#include <system_error>

#include "support/clock.h"
#include "support/printing.h"

namespace quorvane {

EventLog::EventLog(const std::string& path) {
  if (path.empty()) return;
  file_.reset(std::fopen(path.c_str(), "we"));
  if (!file_) throw std::system_error(errno, std::generic_category(), path);
}

void EventLog::add(std::string_view event) {
  if (!file_) return;
  const Seconds now = Monotonic::now().time_since_epoch();
  printTo(file_.get(), "{:.3f} {}\n", now.count(), event);
  flush(file_.get());
}

}  // namespace quorvane
