#pragma once

#include <filesystem>
#include <optional>
#include <stop_token>
#include <vector>

#include "doctor/check.h"
#include "doctor/facts.h"
#include "hid/device_info.h"
#include "hid/platform.h"

namespace quorvane {

// The result of an examination: the checks to show, and the facts behind them, for the report.
struct Diagnosis {
  std::vector<DoctorCheck> checks;  // always all of them, in a fixed order
  DoctorFacts facts;

  bool passed() const { return allPassed(checks); }
};

// Checks a base step by step, from the USB bus to its menu, and the preset file, to find out why a
// base is not found or does not answer. Blocks for at most about 5 s; longer only if no thread can
// be started and the preset file's file system hangs. Does not throw. Thread-safe.
//
// Changes nothing: it sends the base the requests that every program sends on connecting. For that
// it opens the base once more (shared). Sessions of this process are not affected and never count
// as another program. They receive the answers too, so write no values meanwhile.
//
// Without a preset file the user has no data directory. Without a base it examines the first
// candidate. When a call to the base blocks, the clock and the base's device may be used for some
// seconds longer. A stop, from any thread, ends the exchange with the
// base: nothing more is sent or awaited.
Diagnosis examine(const Platform& platform, const std::optional<std::filesystem::path>& presetFile,
                  const std::optional<HIDDeviceInfo>& base, const std::stop_token& stop = {});

}  // namespace quorvane
