#pragma once

#include "platform/survey.h"

namespace quorvane {

// The survey of a simulated machine: nothing stands between its bases and the programs.
class SimulatedSurvey final : public HIDSurvey {
 public:
  // The facts about the user and the system are real ones.
  MachineFacts take(std::int64_t vendorID) override;
};

}  // namespace quorvane
