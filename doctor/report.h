#pragma once

#include <string>
#include <vector>

#include "doctor/doctor.h"

namespace quorvane {

// The checks as text for people: a line per check, and for each that failed an indented line with
// the next step.
std::string checksText(const std::vector<DoctorCheck>& checks);

// The text for a bug report, for a person to review and send: versions, checks, devices, rules and
// the base's answers. Masks serial numbers, the user's name and the home directory, also in
// `lastLines`, the end of the log, if there is one.
std::string reportText(const Diagnosis& diagnosis, const std::vector<std::string>& lastLines = {});

}  // namespace quorvane
