#include "simulator/simulated_survey.h"

#include <gtest/gtest.h>

#include "simulator/simulated_machine.h"

namespace quorvane {
namespace {

TEST(SimulatedSurvey, ShowsNoDevicesOfTheRealMachine) {
  SimulatedMachine machine(FanatecProduct::lookup(0x0020).value());
  const MachineFacts facts = machine.platform().survey.take(Fanatec::vendorID);
  EXPECT_TRUE(facts.isSimulated);
  EXPECT_TRUE(facts.usb.empty());
  EXPECT_TRUE(facts.hid.empty());
}

}  // namespace
}  // namespace quorvane
