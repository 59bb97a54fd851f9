#include "platform/device_facts.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quorvane::device_facts_test {
namespace {

TEST(HIDUevent, ReadsWhatTheKernelWrites) {
  const HIDUevent wanted{3, 0x0EB7, 0x0020, "Maker A base", "0815"};
  EXPECT_EQ(parseHIDUevent("DRIVER=hid-generic\n"
                           "HID_ID=0003:00000EB7:00000020\n"
                           "HID_NAME=Maker A base\n"
                           "HID_PHYS=usb-0000:00:14.0-1.4/input0\n"
                           "HID_UNIQ=0815\n"
                           "MODALIAS=hid:b0003g0001v00000EB7p00000020\n"),
            wanted);
}

TEST(HIDUevent, MissingLinesAreZeroOrEmpty) {
  const std::vector<std::pair<std::string_view, HIDUevent>> cases{
      {"", {}},
      {"\n", {}},
      {"\n\n\n", {}},
      {"DRIVER=hid-generic\n", {}},
      {"HID_ID=0003:00000EB7:00000020\n", {3, 0x0EB7, 0x0020, "", ""}},
      {"HID_ID=0003:00000EB7:00000020", {3, 0x0EB7, 0x0020, "", ""}},
      {"HID_NAME=A base\n", {0, 0, 0, "A base", ""}},
      {"HID_UNIQ=0815\n", {0, 0, 0, "", "0815"}},
      {"HID_ID=0006:00000EB7:00000020\nHID_NAME=A base\nHID_UNIQ=\n",
       {6, 0x0EB7, 0x20, "A base", ""}},
      {"HID_UNIQ=0815\nHID_NAME=A base\nHID_ID=0003:0EB7:0020\n",
       {3, 0x0EB7, 0x20, "A base", "0815"}},
  };
  for (const auto& [text, uevent] : cases) EXPECT_EQ(parseHIDUevent(text), uevent) << text;
}

TEST(HIDUevent, AnIDThatIsNoneCountsAsMissing) {
  for (const std::string_view id :
       {"", ":", "::", "0003", "0003:00000EB7", "0003:00000EB7:", ":00000EB7:00000020",
        "0003::00000020", "0003:00000EB7:00000020:", "0003:00000EB7:00000020:1", "x:y:z",
        "0003:00000EB7:0000002g", "0003:00000EB7: 0020", "0003:-EB7:0020", "0003:00000EB7:0020\r",
        "100000000:0EB7:0020", "0003:FFFFFFFFF:0020", "0003,0EB7,0020", "=0003:0EB7:0020"}) {
    EXPECT_EQ(parseHIDUevent("HID_ID=" + std::string(id) + "\n"), HIDUevent{}) << id;
  }
}

TEST(HIDUevent, AnIDThatIsNoneLeavesTheOtherLines) {
  EXPECT_EQ(parseHIDUevent("HID_ID=garbage\nHID_NAME=A base\nHID_UNIQ=0815\n"),
            (HIDUevent{0, 0, 0, "A base", "0815"}));
}

TEST(HIDUevent, ReadsTheWholeRangeOfAnID) {
  EXPECT_EQ(parseHIDUevent("HID_ID=FFFF:FFFFFFFF:ffffffff"),
            (HIDUevent{0xFFFF, 0xFFFFFFFF, 0xFFFFFFFF, "", ""}));
  EXPECT_EQ(parseHIDUevent("HID_ID=0:0:0"), HIDUevent{});
}

TEST(HIDUevent, TheFirstOfRepeatedLinesCounts) {
  EXPECT_EQ(parseHIDUevent("HID_ID=0003:00000EB7:00000020\nHID_NAME=A base\n"
                           "HID_ID=0003:0000DEAD:0000BEEF\nHID_NAME=B\nHID_UNIQ=1\nHID_UNIQ=2\n"),
            (HIDUevent{3, 0x0EB7, 0x0020, "A base", "1"}));
}

TEST(HIDUevent, TheFirstLineCountsWhateverItHolds) {
  EXPECT_EQ(parseHIDUevent("HID_ID=0000:00000001:00000002\nHID_NAME=\nHID_UNIQ=\n"
                           "HID_ID=0003:00000EB7:00000020\nHID_NAME=B\nHID_UNIQ=2\n"),
            (HIDUevent{0, 1, 2, "", ""}));
  EXPECT_EQ(parseHIDUevent("HID_ID=garbage\nHID_ID=0003:00000EB7:00000020\n"), HIDUevent{});
}

TEST(HIDUevent, TextsAreTakenAsTheyAre) {
  const std::vector<std::string> texts{"a=b",
                                       "=",
                                       " spaces ",
                                       "tab\there",
                                       "quote\"'`$",
                                       "HID_ID=0001:0001:0001",
                                       "\xC3\xA4\xFF",
                                       std::string("nul\0nul", 7),
                                       std::string(100000, 'x')};
  for (const std::string& text : texts) {
    const std::string lines = fmt::format("HID_NAME={}\nHID_UNIQ={}", text, text);
    EXPECT_EQ(parseHIDUevent(lines), (HIDUevent{0, 0, 0, text, text}));
  }
}

TEST(HIDUevent, OtherLinesAreIgnored) {
  for (const std::string_view line :
       {"HID_NAME", "NAME=x", "XHID_NAME=x", "HID_NAMEX=x", "HID_NAME =x", " HID_NAME=x",
        "hid_name=x", "=x", "==", "HID_ID", "HID_UNIQUE=x", "HID_PHYS=x", "garbage", "\xFF\xFE"}) {
    EXPECT_EQ(parseHIDUevent(line), HIDUevent{}) << line;
  }
}

TEST(HIDUevent, RandomTextsAreRead) {
  std::mt19937 random(3);
  constexpr std::string_view letters = "HID_ID=NAMEUQ:03EB7\n\n=:";
  for (int round = 0; round < 5000; ++round) {
    std::string text = random() % 2 == 0 ? "HID_ID=" : "";
    for (std::size_t i = random() % 60; i > 0; --i)
      text.push_back(letters[random() % letters.size()]);
    const HIDUevent uevent = parseHIDUevent(text);
    EXPECT_LE(uevent.name.size() + uevent.uniq.size(), text.size());
    EXPECT_EQ(uevent.name.find('\n'), std::string::npos);
  }
}

TEST(TransportName, NamesTheBusesOfHIDDevices) {
  const std::map<std::int64_t, std::string> names{
      {0x03, "USB"}, {0x05, "Bluetooth"}, {0x06, "Virtual"}, {0x18, "I2C"}};
  for (std::int64_t bus = -1; bus <= 0x200; ++bus) {
    const auto known = names.find(bus);
    EXPECT_EQ(transportName(bus), known == names.end() ? "" : known->second) << bus;
  }
}

TEST(ChangesDevices, ArrivalsRemovalsAndChangesDo) {
  for (const char* const action : {"add", "remove", "change"}) {
    EXPECT_TRUE(changesDevices(action)) << action;
  }
  for (const char* const action : {"", "bind", "unbind", "move", "online", "offline", "Change"}) {
    EXPECT_FALSE(changesDevices(action)) << action;
  }
}

TEST(VendorInPath, FindsThePartThatNamesTheHIDDevice) {
  const std::vector<std::pair<std::string_view, std::int64_t>> cases{
      {"/devices/pci0000:00/0000:00:14.0/usb3/3-1/3-1.4/3-1.4:1.0/0003:0EB7:0020.0001/hidraw/"
       "hidraw0",
       0x0EB7},
      {"/devices/virtual/misc/uhid/0003:0EB7:0020.0001/hidraw/hidraw0", 0x0EB7},
      {"/devices/virtual/misc/uhid/0003:0eb7:0020.00AB", 0x0EB7},
      {"/devices/platform/i2c/i2c-1/0018:04F3:2D4A.0002/hidraw/hidraw1", 0x04F3},
      {"0003:0EB7:0020.0001", 0x0EB7},
      {"0003:0EB7:0020", 0x0EB7},
      {"/0005:FFFF:0000.1/", 0xFFFF},
      // Behind a wireless receiver, the innermost device counts.
      {"/3-1:1.2/0003:046D:C52B.0003/0003:0EB7:0020.0004/hidraw/hidraw2", 0x0EB7},
      {"/0005:0000:0000.1/", 0x0000},
  };
  for (const auto& [path, vendor] : cases) EXPECT_EQ(vendorInPath(path), vendor) << path;
}

TEST(VendorInPath, FindsNoneInOtherPaths) {
  for (const std::string_view path :
       {"", "/", "//", ".", "/devices/pci0000:00/0000:00:14.0/usb3/3-1/3-1:1.0",
        "/devices/virtual/misc/uhid/hidraw/hidraw0", "/0003:0EB7/hidraw0", "/0003:0EB7:0020:1/x",
        "/003:0EB7:0020.0001", "/00003:0EB7:0020.0001", "/0003:EB7:0020.0001",
        "/0003:00EB7:0020.0001", "/0003:0EBG:0020.0001", "/0003: EB7:0020.0001", "/0003::0020.0001",
        "/:::", "/0003:\xFF\xFF\xFF\xFF:0020.0001", "/000.3:0EB7:0020"}) {
    EXPECT_EQ(vendorInPath(path), std::nullopt) << path;
  }
}

TEST(USBLocationID, PutsTheBusOnTopAndOneNibbleAPortBelow) {
  struct Case {
    std::int64_t bus;
    std::string_view devpath;
    std::int64_t location;
  };
  const std::vector<Case> cases{
      {3, "1.4", 0x03140000},
      {3, "1", 0x03100000},
      {1, "2", 0x01200000},
      {0x1A, "1.2.3", 0x1A123000},
      {2, "1.2.3.4.5.6", 0x02123456},
      {2, "15.15.15.15.15.15", 0x02FFFFFF},
      {255, "10.1", 0xFFA10000},
      // Ports from the seventh on do not fit.
      {2, "1.2.3.4.5.6.7", 0x02123456},
      {2, "1.2.3.4.5.6.7.8.9", 0x02123456},
      // A root hub has no port.
      {3, "0", 0x03000000},
      {3, "", 0x03000000},
      {0, "", 0x00000000},
      {0, "1", 0x00100000},
  };
  for (const Case& c : cases) EXPECT_EQ(usbLocationID(c.bus, c.devpath), c.location) << c.devpath;
}

TEST(USBLocationID, TellsEveryPortOfAHubApart) {
  for (std::int64_t port = 1; port <= 15; ++port) {
    EXPECT_EQ(usbLocationID(7, "2." + std::to_string(port)), 0x07200000 + port * 0x10000) << port;
  }
}

TEST(USBLocationID, WhateverThePathItStaysOnItsBus) {
  for (const std::string_view path :
       {".", "..", "...........", "x", "1.x", "1..4", "-1", "1.-1.4", "999999999999999999999",
        "9223372036854775807.1", " 1", "1\n", "1.4.", ".1", "+1", "0x1"}) {
    for (const std::int64_t bus : {0, 3, 255}) {
      const std::int64_t location = usbLocationID(bus, path);
      EXPECT_EQ(location / 0x1000000, bus) << path;
      EXPECT_GE(location, 0) << path;
    }
  }
  EXPECT_EQ(usbLocationID(3, "x.4"), 0x03040000);
  EXPECT_EQ(usbLocationID(3, "1.x.4"), 0x03104000);
}

}  // namespace
}  // namespace quorvane::device_facts_test
