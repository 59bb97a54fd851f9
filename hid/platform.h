#pragma once

#include "hid/port.h"
#include "hid/usb_reset.h"
#include "platform/survey.h"
#include "support/clock.h"

namespace quorvane {

// The machine that a program works with: its devices, its time and the facts about it. By default
// this machine; simulated bases and tests have their own. The references must outlive the users.
struct Platform {
  HIDBackend& backend = HIDBackend::system();
  USBBus& usb = USBBus::system();
  Clock& clock = Clock::system();
  HIDSurvey& survey = HIDSurvey::system();
};

}  // namespace quorvane
