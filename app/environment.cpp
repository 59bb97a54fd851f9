#include "app/environment.h"

#include <cstdlib>

namespace quorvane::Environment {
namespace {

std::string text(const char* name) {
  const char* const value = std::getenv(name);
  return value != nullptr ? value : "";
}

}  // namespace

bool logsToStandardError() { return std::getenv("QUORVANE_LOG_STDERR") != nullptr; }

std::string demoStage() { return text("QUORVANE_DEMO_STAGE"); }

std::string section() { return text("QUORVANE_SECTION"); }

}  // namespace quorvane::Environment
