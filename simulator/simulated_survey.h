#pragma once

#include "platform/survey.h"

namespace quorvane {

// The survey of a simulated machine: without USB and HID devices of its own, so that the doctor
// finds no obstacle between the bases and the programs.
class SimulatedSurvey final : public HIDSurvey {
 public:
  // The facts about the user and the system are those of the real machine.
  MachineFacts take(std::int64_t vendorID) override;
};

}  // namespace quorvane
