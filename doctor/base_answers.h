#pragma once

#include <optional>
#include <stop_token>
#include <string>

#include "hid/device_info.h"
#include "protocol/identity_report.h"
#include "protocol/tuning_snapshot.h"
#include "support/clock.h"

namespace quorvane {

// A base's answers to the requests for its identity and its menu.
struct BaseAnswers {
  enum class Opening { notTried, opened, notPermitted, heldByAnother, failed };

  Opening opening = Opening::notTried;
  std::string openFailure;  // the error text when it was not opened
  std::optional<IdentityReport> identity;
  std::string identityFailure;
  std::optional<TuningSnapshot> tuning;
  std::string tuningFailure;
  std::optional<std::uint16_t> firmwareVersion;  // none: not received
  bool outOfTime = false;                        // the exchange was still blocked at the limit
};

// Opens the base (shared), sends both requests with the session's own timeout, and closes it.
// Blocks for at most `limit`. If a call to the base still blocks then, the thread is left running;
// it ends when the call returns, and may use `clock` until then. A stop ends the exchange: nothing
// more is sent or awaited.
BaseAnswers askBase(const HIDDeviceInfo& base, Clock& clock, Seconds limit,
                    const std::stop_token& stop = {});

}  // namespace quorvane
