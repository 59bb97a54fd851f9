#include "app/log.h"

#include <cstdio>
#include <utility>

#include "app/environment.h"
#include "support/printing.h"
#include "support/text.h"

namespace quorvane {

void Log::append(std::string text, bool isError) {
  if (Environment::logsToStandardError()) {
    printTo(stderr, "{}{}\n", isError ? "[error] " : "[log] ", oneLine(text));
  }
  entries_.push_back({UUID::random(), WallClock::now(), text, isError});
  if (entries_.size() > longest) entries_.erase(entries_.begin());
  statusLine_ = std::move(text);
  emit changed();
}

void Log::setStatus(std::string text) {
  if (statusLine_ == text) return;
  statusLine_ = std::move(text);
  emit changed();
}

}  // namespace quorvane
