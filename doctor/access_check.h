#pragma once

#include "doctor/trail.h"
#include "doctor/verdict.h"

namespace quorvane {

// Whether this user may read and write the base's node: who grants it, or what is missing. A pure
// function of the facts.
Verdict judgeAccess(const DoctorFacts& facts, const Trail& trail);

}  // namespace quorvane
