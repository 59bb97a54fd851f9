#pragma once

#include <vector>

#include "doctor/check.h"
#include "doctor/facts.h"

namespace quorvane {

// The whole list, in its order. A pure function.
std::vector<DoctorCheck> judge(const DoctorFacts& facts);

}  // namespace quorvane
