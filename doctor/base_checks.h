#pragma once

#include "doctor/device_path.h"
#include "doctor/verdict.h"

namespace quorvane {

// What the base itself makes of it. Pure functions of the facts.

Verdict judgeReports(const DoctorFacts& facts, const DevicePath& path);
Verdict judgeIdentity(const DoctorFacts& facts, const DevicePath& path);
Verdict judgeTuning(const DoctorFacts& facts, const DevicePath& path);

// Other programs that have the base open: no harm, unless they keep it to themselves or it does not
// answer.
Verdict judgeHolders(const DoctorFacts& facts, const DevicePath& path);

}  // namespace quorvane
