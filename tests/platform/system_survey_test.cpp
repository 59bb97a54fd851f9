#include "platform/system_survey.h"

#include <gtest/gtest.h>

#include "protocol/product.h"
#include "tests/platform/system_tree.h"
#include "tests/support/ordinary_user.h"

namespace quorvane::system_survey_test {
namespace {

MachineFacts factsOf(const SystemTree& tree) {
  return SystemSurvey(tree.root(), 1).take(Fanatec::vendorID);
}

TEST(SystemSurvey, FollowsABaseFromTheBusToItsNode) {
  const SystemTree tree;
  tree.addOpenBase();
  const MachineFacts machine = factsOf(tree);

  ASSERT_EQ(machine.usb.size(), 1U);
  const USBDeviceFacts& usb = machine.usb[0];
  EXPECT_EQ(usb.name, "3-1");
  EXPECT_EQ(usb.productID, 0x0020);
  EXPECT_EQ(usb.product, "FANATEC CSL DD");
  EXPECT_EQ(usb.serialNumber, "QV-4711");
  EXPECT_TRUE(usb.isAuthorized);
  ASSERT_EQ(usb.interfaces.size(), 1U);
  EXPECT_EQ(usb.interfaces[0].name, "3-1:1.0");
  EXPECT_TRUE(usb.interfaces[0].isHID);
  EXPECT_EQ(usb.interfaces[0].driver, "usbhid");

  ASSERT_EQ(machine.hid.size(), 1U);
  const HIDFacts& hid = machine.hid[0];
  EXPECT_EQ(hid.name, "0003:0EB7:0020.0001");
  EXPECT_EQ(hid.productID, 0x0020);
  EXPECT_EQ(hid.product, "FANATEC CSL DD");
  EXPECT_EQ(hid.serialNumber, "QV-4711");
  EXPECT_EQ(hid.usbInterface, "3-1:1.0");
  EXPECT_EQ(hid.driver, "hid-generic");
  EXPECT_EQ(hid.descriptor, SimulatedBase::reportDescriptor());

  ASSERT_TRUE(hid.node);
  EXPECT_EQ(hid.node->path, SystemTree::node);
  EXPECT_TRUE(hid.node->exists);
  EXPECT_EQ(hid.node->mode, 0666U);
  EXPECT_TRUE(hid.node->mayRead);
  EXPECT_TRUE(hid.node->mayWrite);
  EXPECT_EQ(hid.node->isTaggedForSeat, true);
  ASSERT_EQ(hid.node->rules.size(), 1U);
  EXPECT_EQ(hid.node->rules[0].rule.file, SystemTree::ourRule);
  ASSERT_EQ(machine.vendorRules.size(), 1U);
  EXPECT_EQ(machine.vendorRules[0].file, SystemTree::ourRule);
}

TEST(SystemSurvey, TellsWhatTheSystemIs) {
  const SystemTree tree;
  MachineFacts machine = factsOf(tree);
  EXPECT_FALSE(machine.isSimulated);
  EXPECT_TRUE(machine.hasUSB);
  EXPECT_TRUE(machine.hasUdev);
  EXPECT_FALSE(machine.isContainer);
  EXPECT_EQ(machine.seatedUsers, std::vector<std::uint32_t>{SystemTree::ordinarySeat()});
  EXPECT_EQ(machine.kernel, "6.1.0-18-amd64");
  EXPECT_EQ(machine.distribution, "Debian GNU/Linux 12 (bookworm)");
  EXPECT_TRUE(machine.usb.empty());
  EXPECT_TRUE(machine.hid.empty());

  tree.remove("/run");
  tree.remove("/sys");
  tree.file("/.dockerenv", "");
  machine = factsOf(tree);
  EXPECT_FALSE(machine.hasUSB);
  EXPECT_FALSE(machine.hasUdev);
  EXPECT_TRUE(machine.isContainer);
  EXPECT_EQ(machine.seatedUsers, std::nullopt);
}

TEST(SystemSurvey, KnowsTheSandboxItIsIn) {
  const SystemTree tree;
  tree.addOpenBase();
  EXPECT_FALSE(factsOf(tree).sandbox);

  tree.file("/.flatpak-info", "[Application]\nname=org.example.Quorvane\n");
  MachineFacts machine = factsOf(tree);
  ASSERT_TRUE(machine.sandbox);
  EXPECT_EQ(machine.sandbox->application, "org.example.Quorvane");
  EXPECT_FALSE(machine.sandbox->showsHostRules);
  EXPECT_TRUE(machine.hid[0].node->rules.empty());  // udev does not read the sandbox's own rules

  // Files of the host are reported with their paths on the host.
  tree.file("/run/host/etc/udev/rules.d/70-quorvane.rules", SystemTree::ruleText);
  machine = factsOf(tree);
  EXPECT_FALSE(machine.sandbox->showsHostRules);
  ASSERT_EQ(machine.hid[0].node->rules.size(), 1U);
  EXPECT_EQ(machine.hid[0].node->rules[0].rule.file, SystemTree::ourRule);
  tree.directory("/run/host/usr/lib/udev/rules.d");
  EXPECT_TRUE(factsOf(tree).sandbox->showsHostRules);
}

TEST(SystemSurvey, LeavesOtherVendorsOut) {
  const SystemTree tree;
  tree.addOpenBase();
  const MachineFacts machine = SystemSurvey(tree.root(), 1).take(0x046D);
  EXPECT_TRUE(machine.usb.empty());
  EXPECT_TRUE(machine.hid.empty());
}

TEST(SystemSurvey, ADeviceMayStopAtEachStepOfItsWay) {
  const SystemTree tree;
  tree.attach();
  tree.file("/sys/devices/usb3/3-1/authorized", "0\n");
  MachineFacts machine = factsOf(tree);
  ASSERT_EQ(machine.usb.size(), 1U);
  EXPECT_FALSE(machine.usb[0].isAuthorized);
  EXPECT_TRUE(machine.usb[0].interfaces.empty());

  tree.addInterface("", "ff");
  machine = factsOf(tree);
  ASSERT_EQ(machine.usb[0].interfaces.size(), 1U);
  EXPECT_FALSE(machine.usb[0].interfaces[0].isHID);
  EXPECT_EQ(machine.usb[0].interfaces[0].driver, "");
  EXPECT_TRUE(machine.hid.empty());

  tree.addHID("");
  machine = factsOf(tree);
  ASSERT_EQ(machine.hid.size(), 1U);
  EXPECT_EQ(machine.hid[0].driver, "");
  EXPECT_FALSE(machine.hid[0].node);

  tree.addNode();
  tree.remove(SystemTree::node);
  machine = factsOf(tree);
  ASSERT_TRUE(machine.hid[0].node);
  EXPECT_FALSE(machine.hid[0].node->exists);
  EXPECT_EQ(machine.hid[0].node->isTaggedForSeat, std::nullopt);
}

TEST(SystemSurvey, AsksWhetherThisUserMayOpenTheNode) {
  const SystemTree tree;
  tree.addClosedBase();
  tree.udevKnows(false);
  const AsOrdinaryUser user;
  const auto node = [&] { return factsOf(tree).hid.at(0).node.value(); };
  EXPECT_FALSE(node().mayRead);
  EXPECT_FALSE(node().mayWrite);
  EXPECT_EQ(node().isTaggedForSeat, false);
}

TEST(SystemSurvey, ARuleThatIsHiddenIsNamedWithWhatHidesIt) {
  const SystemTree tree;
  tree.addClosedBase();
  tree.file("/usr/lib/udev/rules.d/70-quorvane.rules", SystemTree::ruleText);
  tree.file("/usr/lib/udev/rules.d/60-other.rules", R"(SUBSYSTEM=="block", MODE="0660")");
  tree.link(SystemTree::ourRule, "/dev/null");
  tree.link("/etc/udev/rules.d/60-other.rules", "/dev/null");
  const NodeFacts node = factsOf(tree).hid.at(0).node.value();
  EXPECT_TRUE(node.rules.empty());
  ASSERT_EQ(node.hiddenRules.size(), 1U);
  EXPECT_EQ(node.hiddenRules[0].hiddenBy, SystemTree::ourRule);
  EXPECT_TRUE(node.hiddenRules[0].isMask);
}

TEST(SystemSurvey, TextsOfADeviceStayOnOneLine) {
  const SystemTree tree;
  tree.attach();
  tree.file("/sys/devices/usb3/3-1/product", "a\nb\x1b[31m\n");
  EXPECT_EQ(factsOf(tree).usb.at(0).product, "a b [31m");
}

TEST(SystemSurvey, OfThisMachineComesBack) {
  EXPECT_FALSE(HIDSurvey::system().take(Fanatec::vendorID).isSimulated);
}

}  // namespace
}  // namespace quorvane::system_survey_test
