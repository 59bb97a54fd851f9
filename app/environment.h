#pragma once

#include <string>

// Settings from environment variables, read at each call.
namespace quorvane::Environment {

// QUORVANE_LOG_STDERR, set to any value: the log goes to standard error as well.
bool logsToStandardError();

// QUORVANE_DEMO_STAGE: edits to stage after connecting (see parseDemoStage).
std::string demoStage();

// QUORVANE_SECTION: the title of the section that the window shows first.
std::string section();

}  // namespace quorvane::Environment
