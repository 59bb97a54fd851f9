#include "simulator/simulated_survey.h"

namespace quorvane {

MachineFacts SimulatedSurvey::take(std::int64_t vendorID) {
  MachineFacts machine = HIDSurvey::system().take(vendorID);
  machine.isSimulated = true;
  machine.usb.clear();
  machine.hid.clear();
  return machine;
}

}  // namespace quorvane
