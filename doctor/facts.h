#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "doctor/base_answers.h"
#include "hid/device_info.h"
#include "hid/survey.h"

namespace quorvane {

// What became of reading the user's presets.
struct PresetFacts {
  std::optional<std::filesystem::path> file;  // none: the user has no place for one
  bool isMissing = false;
  std::size_t count = 0;       // of the presets in it
  std::string openFailure;     // why it cannot be read
  std::string contentFailure;  // why what was read cannot be used
  std::string replaceFailure;  // why it cannot be written
  bool outOfTime = false;      // the file system it is on does not answer
};

// All that the checks are made from.
struct DoctorFacts {
  MachineFacts machine;
  std::vector<HIDDeviceInfo> devices;  // of the vendor, as the programs see them
  std::optional<HIDDeviceInfo> base;   // the one that is examined
  BaseAnswers answers;                 // its own
  PresetFacts presets;
};

}  // namespace quorvane
