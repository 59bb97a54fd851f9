#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "tests/faults/model/action.h"

// What several actions show.
namespace quorvane {

inline const Lines connectedStatus{std::string("[status] Connected to ") + baseName};
inline const Lines absentStatus{std::string("[status] ") + noBaseStatus};
inline const Lines notConnectedLine{"[error] No base connected"};

inline std::function<Lines(const Action::Errors&)> always(Lines lines) {
  return [lines = std::move(lines)](const Action::Errors&) { return lines; };
}

inline std::function<std::string(const Action::Errors&)> nothingStaged() {
  return [](const Action::Errors&) { return std::string(); };
}

inline TuningPreset testPreset(const std::vector<ParameterValue>& values) {
  return presetOf("Test", values);
}

}  // namespace quorvane
