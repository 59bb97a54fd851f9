#include <gtest/gtest.h>

#include <cerrno>
#include <fstream>
#include <sstream>
#include <string>

#include "cli/base_access.h"
#include "tests/cli/command_line_fixture.h"

namespace quorvane {
namespace {

using RotationCommand = CommandLineTest;
using RawCommand = CommandLineTest;
using USBResetCommand = CommandLineTest;
using UdevRuleCommand = CommandLineTest;

const Json simulatedDevice = {{"id", simulatedID},
                              {"name", simulatedName},
                              {"productID", 32},
                              {"serialNumber", ""},
                              {"node", ""}};

TEST_F(RotationCommand, SendsTheDirectCommand) {
  base();
  EXPECT_EQ(run("rotation 900"),
            (Outcome{ExitStatus::done, "Steering angle set to 900 deg\n", ""}));
  EXPECT_EQ(transcript(), (Lines{"open", "> 01 f5 +6", "> 01 f8 09 01 06 01 +2",
                                 "> 01 f8 81 84 03 +3", "close"}));
}

TEST_F(RotationCommand, TakesTheUnitToo) {
  base();
  for (const std::string word : {"540deg", "540 deg", "540\u00B0"}) {
    EXPECT_EQ(run(std::vector<std::string>{"rotation", word}).out,
              "Steering angle set to 540 deg\n")
        << word;
  }
}

TEST_F(RotationCommand, GivesOneDocument) {
  base();
  const Json wanted = {{"device", simulatedDevice}, {"rotation", 2520}};
  EXPECT_EQ(run("rotation 2520 --json"),
            (Outcome{ExitStatus::done, documentText(wanted) + "\n", ""}));
}

TEST_F(RotationCommand, UsesTheReportAskedFor) {
  base();
  for (const char* const option : {"--report-id 3", "--report-id=0x03", "--report-id 0X3"}) {
    base().transcript().clear();
    EXPECT_EQ(run(std::string(option) + " rotation 90").status, ExitStatus::done) << option;
    EXPECT_EQ(transcript(),
              (Lines{"open", "> 03 f5 +6", "> 03 f8 09 01 06 01 +2", "> 03 f8 81 5a +4", "close"}));
  }
  expectedViolations_.assign(9, "a packet on report 0x03, which has no output");
}

TEST_F(RotationCommand, PedalsThatPresentThemselvesAsAJoystickHaveNoAngle) {
  base().setProperty(HIDPropertyKey::productID, std::int64_t{0x183B});
  const std::string message = "ClubSport Pedals V3 has no steering angle";
  EXPECT_EQ(run("rotation 900"), (Outcome{ExitStatus::failed, "", message + "\n"}));
  EXPECT_EQ(run("--json rotation 900"),
            (Outcome{ExitStatus::failed, errorDocument("notAvailable", message), message + "\n"}));
  for (const std::string& line : transcript()) EXPECT_TRUE(line == "open" || line == "close");
}

TEST_F(RotationCommand, AnAngleOutOfRangeIsAFailureAndSendsNothing) {
  base();
  for (const std::string angle : {"89", "2521", "0", "-900"}) {
    const std::string message = "Steering angle " + angle + ": 90 to 2520 degrees";
    EXPECT_EQ(run("rotation " + angle), (Outcome{ExitStatus::failed, "", message + "\n"}));
    EXPECT_EQ(run("--json rotation " + angle),
              (Outcome{ExitStatus::failed, errorDocument("outOfRange", message), message + "\n"}));
  }
  for (const std::string& line : transcript()) EXPECT_TRUE(line == "open" || line == "close");
}

TEST_F(RotationCommand, TheRangeIsTheProducts) {
  attach(0x0001);
  EXPECT_EQ(run("rotation 910"),
            (Outcome{ExitStatus::failed, "", "Steering angle 910: 90 to 900 degrees\n"}));
}

TEST_F(RotationCommand, ABaseWithoutOutputReportsNeedsTheReportNamed) {
  base().setProperty(HIDPropertyKey::reportDescriptor,
                     Bytes{0x75, 0x08, 0x95, 0x08, 0x81, 0x02});  // one input report
  const std::string message = "Could not find the base's 7-byte output report; pass --report-id";
  EXPECT_EQ(
      run("--json rotation 900"),
      (Outcome{ExitStatus::failed, errorDocument("noOutputReport", message), message + "\n"}));
  EXPECT_EQ(run("--report-id 1 rotation 900").status, ExitStatus::done);
}

TEST_F(RotationCommand, GoesToTheNamedBase) {
  attach(0x0006);
  attach(0x0020).setProperty(HIDPropertyKey::serialNumber, std::string("QV-2"));
  EXPECT_EQ(run("--device QV-2 rotation 900").status, ExitStatus::done);
  EXPECT_EQ(devices_[0]->transcript().lines(), Lines{});
  EXPECT_EQ(devices_[1]->transcript().lines().size(), 5U);
}

TEST_F(RawCommand, SendsThePacketAsGiven) {
  base();
  EXPECT_EQ(run("raw 01 f8 09 01 06 ff 01 00"),
            (Outcome{ExitStatus::done, "Sent 8 bytes: 01 f8 09 01 06 ff 01 00\n", ""}));
  EXPECT_EQ(transcript(), (Lines{"open", "> 01 f8 09 01 06 ff 01 +1", "close"}));
}

TEST_F(RawCommand, TakesBytesInEverySpelling) {
  base();
  for (const char* const bytes : {"01f80901 06ff0100", "0x01 0xF8 9 1 6 0xff 1 0",
                                  "01F8090106FF0100", "0x01f80901 6 ff 1 0"}) {
    base().transcript().clear();
    EXPECT_EQ(run(std::string("raw ") + bytes).status, ExitStatus::done) << bytes;
    EXPECT_EQ(transcript()[1], "> 01 f8 09 01 06 ff 01 +1") << bytes;
  }
  EXPECT_EQ(run(std::vector<std::string>{"raw", "01 f8 09 01", "06 ff 01 00"}).out,
            "Sent 8 bytes: 01 f8 09 01 06 ff 01 00\n");
}

TEST_F(RawCommand, GivesOneDocument) {
  base();
  const Json wanted = {{"device", simulatedDevice}, {"sent", "01 f8 09 01 06 ff 01 00"}};
  EXPECT_EQ(run("raw --json 01 f8 09 01 06 ff 01 00"),
            (Outcome{ExitStatus::done, documentText(wanted) + "\n", ""}));
}

TEST_F(RawCommand, AByteAloneIsRefusedAsTheKernelDoes) {
  base();
  EXPECT_EQ(run("raw ff"), (Outcome{ExitStatus::failed, "",
                                    "HID I/O failed: SetReport id 0xFF -> IOReturn 0x0000C016\n"}));
}

TEST_F(RawCommand, ASendThatFailsIsAFailure) {
  change([](SimulatedBehaviour& behaviour) { behaviour.failSendsWith = 0xC020; });
  EXPECT_EQ(run("raw 01 02"),
            (Outcome{ExitStatus::failed, "",
                     "HID I/O failed: SetReport id 0x1 -> IOReturn 0x0000C020\n"}));
}

TEST_F(USBResetCommand, ResetsTheFirstDeviceOfTheVendor) {
  usb_.attached = {{0x1D6B, 0x0002, 0x01000000},
                   {Fanatec::vendorID, 0x0020, 0x03140000},
                   {Fanatec::vendorID, 0x6204, 0x03200000}};
  EXPECT_EQ(run("usb-reset"),
            (Outcome{ExitStatus::done,
                     "USB reset issued; the base will reconnect in a few seconds\n", ""}));
  EXPECT_EQ(usb_.resetLocations, (std::vector<std::int64_t>{0x03140000}));
}

TEST_F(USBResetCommand, GivesOneDocument) {
  usb_.attached = {{Fanatec::vendorID, 0x0020, 0x03140000}};
  EXPECT_EQ(run("usb-reset --json"),
            (Outcome{ExitStatus::done, "{\n  \"locationID\": 51642368\n}\n", ""}));
}

TEST_F(USBResetCommand, ResetsTheProductOfTheNamedBase) {
  attach(0x0006);
  usb_.attached = {{Fanatec::vendorID, 0x0020, 0x03140000},
                   {Fanatec::vendorID, 0x0006, 0x03200000}};
  EXPECT_EQ(run("--device 0eb7:0006@00000000/1:4 usb-reset").status, ExitStatus::done);
  EXPECT_EQ(usb_.resetLocations, (std::vector<std::int64_t>{0x03200000}));
}

TEST_F(USBResetCommand, ANamedBaseThatIsNotThereResetsNothing) {
  usb_.attached = {{Fanatec::vendorID, 0x0020, 0x03140000}};
  EXPECT_EQ(run("--device QV-9 usb-reset"),
            (Outcome{ExitStatus::failed, "",
                     "HID I/O failed: device not found\nNo base answers to \"QV-9\". The attached "
                     "ones are listed by: quorvanectl devices\n"}));
  EXPECT_EQ(usb_.resetLocations, std::vector<std::int64_t>{});
}

TEST_F(USBResetCommand, NoDeviceIsAFailure) {
  usb_.attached = {{0x1D6B, 0x0002, 0x01000000}};
  const std::string message = "HID I/O failed: no USB device with vendor 0xeb7 found";
  EXPECT_EQ(run("--json usb-reset"),
            (Outcome{ExitStatus::failed, errorDocument("ioFailed", message), message + "\n"}));
}

TEST_F(USBResetCommand, MissingPermissionComesWithOneHint) {
  usb_.attached = {{Fanatec::vendorID, 0x0020, 0x03140000, EACCES}};
  const std::string message = "/dev/bus/usb/001/002: Permission denied";
  EXPECT_EQ(run("--json usb-reset"),
            (Outcome{ExitStatus::failed, errorDocument("ioFailed", message),
                     message + "\n" + permissionHint + "\n"}));
}

TEST_F(USBResetCommand, ADeviceThatLeftIsAFailureWithoutHint) {
  usb_.attached = {{Fanatec::vendorID, 0x0020, 0x03140000, ENODEV}};
  EXPECT_EQ(run("usb-reset"),
            (Outcome{ExitStatus::failed, "", "/dev/bus/usb/001/002: No such device\n"}));
}

TEST_F(UdevRuleCommand, PrintsTheRuleThatGetsInstalled) {
  std::ostringstream rule;
  rule << std::ifstream(UDEV_RULE).rdbuf();
  ASSERT_NE(rule.str(), "");
  EXPECT_EQ(run("udev-rule"), (Outcome{ExitStatus::done, rule.str(), ""}));
}

}  // namespace
}  // namespace quorvane
