#include "doctor/masking.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

TEST(Masking, HidesWhatStandsAlone) {
  const std::vector<Secret> secrets{{"QV-4711", "#"}, {"/home/anna", "~"}, {"anna", "(user)"}};
  const std::vector<std::pair<std::string, std::string>> cases{
      {"", ""},
      {"nothing", "nothing"},
      {"QV-4711", "#"},
      {"qv-4711 QV-4711", "# #"},
      {"/dev/input/by-id/usb-Fanatec_QV-4711-event-joystick",
       "/dev/input/by-id/usb-Fanatec_#-event-joystick"},
      {"HID_UNIQ=QV-4711\n", "HID_UNIQ=#\n"},
      {R"({"serialNumber":"QV-4711"})", R"({"serialNumber":"#"})"},
      {"QV-47110 xQV-4711 QV-471", "QV-47110 xQV-4711 QV-471"},
      {"/home/anna/.local/share", "~/.local/share"},
      {"/home/annabel/anna", "/home/annabel/(user)"},
      {"Anna, hannah, \xC3\xB6"
       "anna",
       "(user), hannah, \xC3\xB6"
       "anna"},
      {"QV-4711QV-4711", "QV-4711QV-4711"},
      {"QV-4711,QV-4711", "#,#"},
  };
  for (const auto& [text, wanted] : cases) EXPECT_EQ(masked(text, secrets), wanted) << text;
}

TEST(Masking, KnowsEverySerialNumberAndTheUser) {
  DoctorFacts facts;
  facts.machine.usb.push_back({"3-1", 0x0020, "", "USB 1", true, {}});
  HIDFacts hid;
  hid.serialNumber = "HID1";
  facts.machine.hid.push_back(hid);
  HIDDeviceInfo info;
  info.serialNumber = "INFO1";
  facts.devices.push_back(info);
  info.serialNumber = "BASE1";
  facts.base = info;
  facts.machine.vendorRules.push_back(
      {"/a.rules", 1, R"(ATTRS{idVendor}=="0eb7", ATTRS{serial}=="RULE1", MODE="0660")"});
  facts.machine.vendorRules.push_back({"/a.rules", 2, R"(ENV{ID_SERIAL_SHORT}=="RULE2)"});
  facts.machine.user.name = "anna";
  facts.machine.user.home = "/home/anna";
  const std::string serial = "(serial number)";
  EXPECT_EQ(secretsIn(facts), (std::vector<Secret>{{"USB 1", serial},
                                                   {"USB_1", serial},
                                                   {"HID1", serial},
                                                   {"INFO1", serial},
                                                   {"BASE1", serial},
                                                   {"RULE1", serial},
                                                   {"/home/anna", "~"},
                                                   {"anna", "(user)"}}));
}

TEST(Masking, RootIsNobodysName) {
  DoctorFacts facts;
  facts.machine.user.name = "root";
  facts.machine.user.home = "/";
  EXPECT_EQ(secretsIn(facts), std::vector<Secret>{});
}

}  // namespace
}  // namespace quorvane
