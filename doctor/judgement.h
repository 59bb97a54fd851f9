#pragma once

#include <vector>

#include "doctor/check.h"
#include "doctor/facts.h"

namespace quorvane {

// All checks, in a fixed order. A pure function of the facts.
std::vector<DoctorCheck> judge(const DoctorFacts& facts);

}  // namespace quorvane
