#pragma once

#include <string>
#include <vector>

#include "doctor/doctor.h"

namespace quorvane {

// The list as people read it: a line for each check, and an indented one with the next step below
// each that failed.
std::string checksText(const std::vector<DoctorCheck>& checks);

// What a bug report needs, as one text for a person to look over and send: versions, the list, the
// devices, the rules, and what the base answered. Serial numbers, the user's name and home
// directory are masked, in `lastLines` as well: those are the end of the log, where there is one.
std::string reportText(const Diagnosis& diagnosis, const std::vector<std::string>& lastLines = {});

}  // namespace quorvane
