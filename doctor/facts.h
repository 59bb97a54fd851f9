#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "doctor/base_answers.h"
#include "hid/device_info.h"
#include "platform/survey.h"

namespace quorvane {

// The result of reading the user's presets.
struct PresetFacts {
  std::optional<std::filesystem::path> file;  // none: the user has no data directory
  bool isMissing = false;
  std::size_t count = 0;       // number of presets in it
  std::string openFailure;     // error text: cannot be read
  std::string contentFailure;  // error text: cannot be decoded
  std::string replaceFailure;  // error text: cannot be written
  bool outOfTime = false;      // the file system did not answer in time
};

// The input of all checks.
struct DoctorFacts {
  MachineFacts machine;
  std::vector<HIDDeviceInfo> devices;  // of the vendor, as enumerated for the programs
  std::optional<HIDDeviceInfo> base;   // the one that is examined
  BaseAnswers answers;                 // of that base
  PresetFacts presets;
};

}  // namespace quorvane
