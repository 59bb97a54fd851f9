#pragma once

#include <string>
#include <vector>

#include "doctor/check.h"

// Texts of the list of the doctor's checks.
namespace quorvane {

// "Passed", "Failed" or "Not checked".
const char* outcomeWord(CheckOutcome outcome);

// "2 of 9 checks failed", or that none did.
std::string checksSummary(const std::vector<DoctorCheck>& checks);

// The check for a screen reader: "Permission: failed. The finding. Next step: ...".
std::string spokenCheck(const DoctorCheck& check);

// "Next step: ..." of a check that failed, else empty.
std::string nextStepText(const DoctorCheck& check);

}  // namespace quorvane
