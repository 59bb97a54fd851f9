#pragma once

#include "doctor/device_path.h"
#include "doctor/verdict.h"

namespace quorvane {

// Whether this user may read and write the base's node, and what grants it or what is missing. A
// pure function of the facts.
Verdict judgeAccess(const DoctorFacts& facts, const DevicePath& path);

}  // namespace quorvane
