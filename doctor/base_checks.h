#pragma once

#include "doctor/trail.h"
#include "doctor/verdict.h"

namespace quorvane {

// What the base itself makes of it. Pure functions of the facts.

Verdict judgeReports(const DoctorFacts& facts, const Trail& trail);
Verdict judgeIdentity(const DoctorFacts& facts, const Trail& trail);
Verdict judgeTuning(const DoctorFacts& facts, const Trail& trail);

// Other programs that have the base open: no harm, unless they keep it to themselves or it does not
// answer.
Verdict judgeHolders(const DoctorFacts& facts, const Trail& trail);

}  // namespace quorvane
