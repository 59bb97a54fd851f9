#pragma once

#include "doctor/device_path.h"
#include "doctor/verdict.h"

namespace quorvane {

// The checks of the base in the kernel: USB bus, driver, node. Pure functions of the facts.

Verdict judgeBus(const DoctorFacts& facts, const DevicePath& path);
Verdict judgeDriver(const DoctorFacts& facts, const DevicePath& path);
Verdict judgeNode(const DoctorFacts& facts, const DevicePath& path);

// Findings of checks that are not made: there is no base, or it is simulated.
extern const char* const noBaseReason;
extern const char* const simulatedReason;

}  // namespace quorvane
