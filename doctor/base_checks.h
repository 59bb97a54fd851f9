#pragma once

#include "doctor/device_path.h"
#include "doctor/verdict.h"

namespace quorvane {

// The checks of the base itself. Pure functions of the facts.

Verdict judgeReports(const DoctorFacts& facts, const DevicePath& path);
Verdict judgeIdentity(const DoctorFacts& facts, const DevicePath& path);
Verdict judgeTuning(const DoctorFacts& facts, const DevicePath& path);

// Other programs that have the base open. Fails only if one has it open exclusively or blocks
// writing, or if the base does not answer.
Verdict judgeHolders(const DoctorFacts& facts, const DevicePath& path);

}  // namespace quorvane
