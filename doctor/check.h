#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

enum class CheckOutcome { passed, failed, notChecked };

// "pass", "fail" or "notChecked".
std::string_view rawValue(CheckOutcome outcome);

// One check in the doctor's list. Each text is a single line in plain words, and contains no serial
// number.
struct DoctorCheck {
  std::string id;     // for programs: "usb", "access", ...; stable across versions
  std::string title;  // for people: "Permission"
  CheckOutcome outcome = CheckOutcome::notChecked;
  std::string finding;    // what was found, or why it was not checked
  std::string nextStep;   // what to do; empty unless it failed
  std::string command{};  // the part of nextStep to type into a terminal; may be empty

  bool operator==(const DoctorCheck&) const = default;
};

// Whether no check failed. Ignores checks with outcome notChecked: they depend on a failed one, or
// do not apply to this base.
bool allPassed(const std::vector<DoctorCheck>& checks);

}  // namespace quorvane
