#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

enum class CheckOutcome { passed, failed, notChecked };

// "pass", "fail" or "notChecked".
std::string_view rawValue(CheckOutcome outcome);

// One line of the doctor's list. Its texts are plain words, on one line each, and never hold a
// serial number.
struct DoctorCheck {
  std::string id;     // for programs: "usb", "access", ...; never changes its meaning
  std::string title;  // for people: "Permission"
  CheckOutcome outcome = CheckOutcome::notChecked;
  std::string finding;   // what was found; of what was not checked, why not
  std::string nextStep;  // what to do now; present exactly when it failed

  bool operator==(const DoctorCheck&) const = default;
};

// Whether nothing failed. What was not checked waits for something that failed, or does not apply
// to this base.
bool allPassed(const std::vector<DoctorCheck>& checks);

}  // namespace quorvane
