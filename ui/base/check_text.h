#pragma once

#include <string>
#include <vector>

#include "doctor/check.h"

// Texts of the list of the doctor's checks.
namespace quorvane {

// "2 of 9 checks failed", or that none did.
std::string checksSummary(const std::vector<DoctorCheck>& checks);

// "4 passed" or "3 not checked".
std::string countOf(CheckOutcome outcome, std::size_t count);

// The titles of the checks: "Reports, Identity: the base is not open to ask it". Ends with the
// finding if none passed and all have the same.
std::string titlesOf(const std::vector<DoctorCheck>& checks);

// The check for a screen reader: "Permission: failed. The finding. Next step: ...".
std::string spokenCheck(const DoctorCheck& check);

// "Next step: ..." of a check that failed, up to its command, and what comes after that. Both may
// be empty.
std::string nextStepText(const DoctorCheck& check);
std::string afterCommandText(const DoctorCheck& check);

}  // namespace quorvane
