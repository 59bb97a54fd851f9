#pragma once

#include "doctor/device_path.h"
#include "doctor/verdict.h"

namespace quorvane {

// How far the kernel has brought the base. Pure functions of the facts.

Verdict judgeBus(const DoctorFacts& facts, const DevicePath& path);
Verdict judgeDriver(const DoctorFacts& facts, const DevicePath& path);
Verdict judgeNode(const DoctorFacts& facts, const DevicePath& path);

// The reason why what follows a step that is missing is not checked.
extern const char* const noBaseReason;
extern const char* const simulatedReason;

}  // namespace quorvane
