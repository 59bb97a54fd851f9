#include "ui/base/base_text.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/cli/attached_nodes.h"

namespace quorvane {
namespace {

HIDDeviceInfo base(const std::string& serialNumber, const std::string& node,
                   std::int64_t locationID) {
  AttachedNodes nodes;
  nodes.add(0x0006, serialNumber, node)
      .setProperty(HIDPropertyKey::locationID, HIDProperty(locationID));
  return HIDEnumerator::devices(Fanatec::vendorID, nodes).front();
}

TEST(BaseText, TellsBasesApartByAllTheyHave) {
  EXPECT_EQ(detailOf(base("A1", "/dev/hidraw3", 0x03140000)),
            "Product ID 0x0006, serial number A1, /dev/hidraw3, USB port 3-1.4");
  EXPECT_EQ(detailOf(base("", "/dev/hidraw3", 0x03140000)),
            "Product ID 0x0006, /dev/hidraw3, USB port 3-1.4");
  EXPECT_EQ(detailOf(base("A1", "", 0)), "Product ID 0x0006, serial number A1");
  EXPECT_EQ(detailOf(base("", "", 0)), "Product ID 0x0006");
}

TEST(BaseText, IsOneLineWhateverTheDeviceSays) {
  HIDDeviceInfo strange = base("A\n1\x1b[31m", "", 0);
  strange.productID = 0x7777;
  strange.product = "Base\r\nof\tTomorrow";
  EXPECT_EQ(nameOf(strange), "Base  of Tomorrow");
  EXPECT_EQ(detailOf(strange), "Product ID 0x7777, serial number A 1 [31m");
}

TEST(BaseText, SaysWhatASwitchCosts) {
  EXPECT_EQ(switchQuestion(base("", "", 0)), "Connect Podium Wheel Base DD1 instead?");
  EXPECT_EQ(switchCost(1, "CSL DD Wheel Base"),
            "1 unsaved change for CSL DD Wheel Base will be discarded.");
  EXPECT_EQ(switchCost(3, "CSL DD Wheel Base"),
            "3 unsaved changes for CSL DD Wheel Base will be discarded.");
}

}  // namespace
}  // namespace quorvane
