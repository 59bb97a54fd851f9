#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include "doctor/check.h"
#include "doctor/facts.h"
#include "hid/device_info.h"
#include "hid/port.h"
#include "hid/survey.h"
#include "support/clock.h"

namespace quorvane {

// Where the doctor looks. What is referred to outlives the examination; the clock and the base's
// device may be used for some seconds longer when the base does not even take a question.
struct DoctorWorld {
  HIDBackend& backend = HIDBackend::system();
  HIDSurvey& survey = HIDSurvey::system();  // a simulated machine has its own
  Clock& clock = Clock::system();
  std::optional<std::filesystem::path> presetFile;  // none: the user has no place for one
  std::optional<HIDDeviceInfo> base;  // the one to examine; none: the one that is connected first
};

// What an examination found: the list to show, and what it rests on, for the report.
struct Diagnosis {
  std::vector<DoctorCheck> checks;  // always all of them, in their order
  DoctorFacts facts;

  bool passed() const { return allPassed(checks); }
};

// Follows a base's way from the bus to its menu, and looks at the preset file: why is my base not
// found, or does not answer? Blocks, at most for about 5 s; throws nothing; any thread may call.
//
// Nothing is changed: it asks the base what every program asks on connecting. For that it opens the
// base once more, shared, beside whoever has it open. Sessions of this process are left alone and
// never count as another program; they see the answers too, so no values should be written
// meanwhile.
Diagnosis examine(const DoctorWorld& world);

}  // namespace quorvane
