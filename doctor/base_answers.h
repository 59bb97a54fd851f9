#pragma once

#include <optional>
#include <string>

#include "hid/device_info.h"
#include "protocol/identity_report.h"
#include "protocol/tuning_snapshot.h"
#include "support/clock.h"

namespace quorvane {

// What a base said when it was asked who it is and what its menu holds.
struct BaseAnswers {
  enum class Opening { notTried, opened, notPermitted, heldByAnother, failed };

  Opening opening = Opening::notTried;
  std::string openFailure;  // in words, when it was not opened
  std::optional<IdentityReport> identity;
  std::string identityFailure;
  std::optional<TuningSnapshot> tuning;
  std::string tuningFailure;
  std::optional<std::uint16_t> firmwareVersion;  // where the base told it
  bool outOfTime = false;                        // it did not even take the questions
};

// Opens the base, shared, asks both questions with the session's own time-out, and closes it.
// Blocks at most for `limit`: a base that does not take a question in that time is left to a thread
// that ends when it does.
BaseAnswers askBase(const HIDDeviceInfo& base, Clock& clock, Seconds limit);

}  // namespace quorvane
