#include "hid/device_info.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/hid/descriptors.h"

namespace quorvane::device_info_test {
namespace {

using Kind = HIDReportSummary::Kind;
using Summaries = std::vector<HIDReportSummary>;

constexpr std::int64_t fanatec = 0x0EB7;

// A device that has only properties and elements, and cannot be opened.
class DescribedDevice final : public HIDDeviceHandle {
 public:
  explicit DescribedDevice(HIDProperties properties, std::vector<HIDElement> elements = {})
      : properties_(std::move(properties)), elements_(std::move(elements)) {}

  std::optional<HIDProperty> property(std::string_view key) const override {
    const auto found = properties_.find(key);
    if (found == properties_.end()) return std::nullopt;
    return found->second;
  }
  std::vector<HIDElement> elements() const override { return elements_; }
  std::string node() const override { return {}; }
  bool accessible() const override { return true; }
  HIDOpenResult open(bool /*exclusive*/) override {
    ADD_FAILURE() << "a device was opened to be described";
    return {HIDReturnCode::generalError, nullptr};
  }

 private:
  HIDProperties properties_;
  std::vector<HIDElement> elements_;
};

HIDProperty number(std::int64_t value) { return value; }
HIDProperty text(std::string value) { return value; }

HIDDeviceInfo infoOf(HIDProperties properties, std::vector<HIDElement> elements = {}) {
  return HIDEnumerator::info(
      std::make_shared<DescribedDevice>(std::move(properties), std::move(elements)));
}

// Returns the given devices for any vendor ID, and records the vendor IDs that were asked for.
class ListedDevices final : public HIDBackend {
 public:
  std::vector<std::shared_ptr<HIDDeviceHandle>> devices(
      std::optional<std::int64_t> vendorID) override {
    asked.push_back(vendorID);
    return list;
  }
  std::unique_ptr<HIDMonitor> monitor(std::optional<std::int64_t> /*vendorID*/) override {
    return nullptr;
  }

  std::vector<std::shared_ptr<HIDDeviceHandle>> list;
  std::vector<std::optional<std::int64_t>> asked;
};

TEST(HIDEnumeratorInfo, ReadsEveryProperty) {
  const auto device = std::make_shared<DescribedDevice>(HIDProperties{
      {"VendorID", number(0x0EB7)},
      {"ProductID", number(0x0020)},
      {"Product", text("A base")},
      {"Manufacturer", text("Its maker")},
      {"SerialNumber", text("0815")},
      {"Transport", text("USB")},
      {"LocationID", number(0x03140000)},
      {"PrimaryUsagePage", number(0x01)},
      {"PrimaryUsage", number(0x04)},
      {"VersionNumber", number(0x0102)},
      {"MaxInputReportSize", number(64)},
      {"MaxOutputReportSize", number(65)},
      {"MaxFeatureReportSize", number(66)},
      {"ReportDescriptor", joystick()},
  });
  const HIDDeviceInfo info = HIDEnumerator::info(device);
  EXPECT_EQ(info.id, "0eb7:0020@03140000/1:4");
  EXPECT_EQ(info.vendorID, 0x0EB7);
  EXPECT_EQ(info.productID, 0x0020);
  EXPECT_EQ(info.product, "A base");
  EXPECT_EQ(info.manufacturer, "Its maker");
  EXPECT_EQ(info.serialNumber, "0815");
  EXPECT_EQ(info.transport, "USB");
  EXPECT_EQ(info.locationID, 0x03140000);
  EXPECT_EQ(info.usagePage, 0x01);
  EXPECT_EQ(info.usage, 0x04);
  EXPECT_EQ(info.versionNumber, 0x0102);
  EXPECT_EQ(info.maxInputReportSize, 64);
  EXPECT_EQ(info.maxOutputReportSize, 65);
  EXPECT_EQ(info.maxFeatureReportSize, 66);
  EXPECT_EQ(info.reportDescriptor.bytes(), joystick());
  EXPECT_EQ(info.reports, (Summaries{{Kind::feature, 3, 3, 1, {0xFF00}},
                                     {Kind::input, 1, 5, 4, {0x01, 0x09}},
                                     {Kind::output, 2, 7, 1, {0xFF00}}}));
  EXPECT_EQ(info.device, device);
}

void expectNoFacts(const HIDDeviceInfo& info) {
  EXPECT_EQ(info.id, "0000:0000@00000000/0:0");
  for (const std::int64_t value : {info.vendorID, info.productID, info.locationID, info.usagePage,
                                   info.usage, info.versionNumber, info.maxInputReportSize,
                                   info.maxOutputReportSize, info.maxFeatureReportSize}) {
    EXPECT_EQ(value, 0);
  }
  for (const std::string& value :
       {info.product, info.manufacturer, info.serialNumber, info.transport}) {
    EXPECT_EQ(value, "");
  }
  EXPECT_TRUE(info.reports.empty());
  EXPECT_TRUE(info.reportDescriptor.bytes().empty());
}

TEST(HIDEnumeratorInfo, AMissingPropertyIsZeroOrEmpty) { expectNoFacts(infoOf({})); }

TEST(HIDEnumeratorInfo, APropertyOfAnotherTypeCountsAsMissing) {
  HIDProperties properties;
  for (const char* const key : {"VendorID", "ProductID", "LocationID", "PrimaryUsagePage",
                                "PrimaryUsage", "VersionNumber", "MaxInputReportSize"}) {
    properties.emplace(key, text("7"));
  }
  for (const char* const key : {"MaxOutputReportSize", "MaxFeatureReportSize"}) {
    properties.emplace(key, Bytes{7});
  }
  for (const char* const key : {"Product", "Manufacturer", "SerialNumber"}) {
    properties.emplace(key, number(7));
  }
  properties.emplace("Transport", Bytes{0x55, 0x53, 0x42});
  properties.emplace("ReportDescriptor", text("75 08"));
  expectNoFacts(infoOf(properties));
}

TEST(HIDEnumeratorInfo, TheIDIsMadeOfFiveNumbers) {
  struct Case {
    std::int64_t vendor;
    std::int64_t product;
    std::int64_t location;
    std::int64_t page;
    std::int64_t usage;
    std::string id;
  };
  const std::vector<Case> cases{
      {0x0EB7, 0x0E03, 0x03140000, 0x01, 0x04, "0eb7:0e03@03140000/1:4"},
      {0x0EB7, 0x0E03, 0x03140000, 0xFF00, 0x01, "0eb7:0e03@03140000/ff00:1"},
      {0x0EB7, 0x0E03, 0x14200000, 0x01, 0x04, "0eb7:0e03@14200000/1:4"},
      {0xFFFF, 0xFFFF, 0xFFFFFFFF, 0xFFFF, 0xFFFF, "ffff:ffff@ffffffff/ffff:ffff"},
      {1, 2, 3, 0xA, 0xB, "0001:0002@00000003/a:b"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(infoOf({{"VendorID", number(c.vendor)},
                      {"ProductID", number(c.product)},
                      {"LocationID", number(c.location)},
                      {"PrimaryUsagePage", number(c.page)},
                      {"PrimaryUsage", number(c.usage)}})
                  .id,
              c.id);
  }
}

TEST(HIDEnumeratorInfo, WithoutADescriptorTheElementsAreSummarised) {
  const std::vector<HIDElement> elements{
      {.type = HIDElementType::output,
       .usagePage = 9,
       .reportID = 5,
       .reportSize = 8,
       .reportCount = 7,
       .usages = {}},
  };
  const Summaries wanted{{Kind::output, 5, 7, 1, {9}}};
  EXPECT_EQ(infoOf({}, elements).reports, wanted);
  EXPECT_EQ(infoOf({{"ReportDescriptor", Bytes{}}}, elements).reports, wanted);
  EXPECT_EQ(infoOf({{"ReportDescriptor", text("none")}}, elements).reports, wanted);
  // A descriptor that declares no reports is ignored.
  const HIDDeviceInfo info = infoOf({{"ReportDescriptor", Bytes{0x75, 0x08}}}, elements);
  EXPECT_EQ(info.reports, wanted);
  EXPECT_EQ(info.reportDescriptor.bytes(), (Bytes{0x75, 0x08}));
}

TEST(HIDEnumeratorInfo, ADescriptorThatDeclaresReportsIsEnough) {
  const std::vector<HIDElement> elements{
      {.type = HIDElementType::feature, .reportSize = 8, .reportCount = 1, .usages = {}}};
  EXPECT_EQ(
      infoOf({{"ReportDescriptor", Bytes{0x75, 0x08, 0x95, 0x01, 0x81, 0x02}}}, elements).reports,
      (Summaries{{Kind::input, 0, 1, 1, {0}}}));
}

HIDElement element(std::uint32_t type, std::uint32_t reportID, std::uint32_t size,
                   std::uint32_t count, std::uint32_t page) {
  HIDElement element;
  element.type = static_cast<HIDElementType>(type);
  element.reportID = reportID;
  element.reportSize = size;
  element.reportCount = count;
  element.usagePage = page;
  return element;
}

TEST(HIDEnumeratorReportSummaries, AddUpTheElementsOfEachReport) {
  const DescribedDevice device(
      {}, {element(1, 1, 16, 1, 1), element(2, 1, 1, 10, 9), element(3, 1, 8, 1, 1),
           element(4, 1, 8, 6, 7), element(129, 1, 8, 7, 0xFF00), element(257, 3, 8, 2, 1)});
  EXPECT_EQ(HIDEnumerator::reportSummaries(device), (Summaries{{Kind::feature, 3, 2, 1, {1}},
                                                               {Kind::input, 1, 11, 4, {1, 7, 9}},
                                                               {Kind::output, 1, 7, 1, {0xFF00}}}));
}

TEST(HIDEnumeratorReportSummaries, SkipCollectionsAndUnknownTypes) {
  for (std::uint32_t type = 0; type <= 600; ++type) {
    const DescribedDevice device({}, {element(type, 1, 8, 1, 1)});
    const bool kept = (type >= 1 && type <= 4) || type == 129 || type == 257;
    EXPECT_EQ(HIDEnumerator::reportSummaries(device).size(), kept ? 1U : 0U) << type;
  }
  EXPECT_TRUE(HIDEnumerator::reportSummaries(DescribedDevice({})).empty());
}

TEST(HIDEnumeratorReportSummaries, SizesHaveNoSign) {
  const DescribedDevice device({},
                               {element(1, 0, 0xFFFFFFFF, 1, 1), element(1, 1, 1, 0xFFFFFFFF, 1)});
  EXPECT_EQ(HIDEnumerator::reportSummaries(device),
            (Summaries{{Kind::input, 0, 536870912, 1, {1}}, {Kind::input, 1, 536870912, 1, {1}}}));
}

TEST(HIDEnumeratorReportSummariesDeathTest, ATotalThatOverflowsStopsTheProgram) {
  const DescribedDevice device({}, {element(1, 0, 0xFFFFFFFF, 0xFFFFFFFF, 1)});
  EXPECT_DEATH(HIDEnumerator::reportSummaries(device),
               "^quorvane: internal fault: the bits of a report overflow\n$");
}

TEST(HIDEnumeratorDevices, AreSortedByProductLocationAndUsage) {
  struct Place {
    std::int64_t product;
    std::int64_t location;
    std::int64_t page;
    std::int64_t usage;
  };
  const std::vector<Place> places{
      {0x20, 0x02000000, 0x01, 0x04},   {0x06, 0x02000000, 0x01, 0x04},
      {0x20, 0x01000000, 0xFF00, 0x01}, {0x20, 0x01000000, 0x01, 0x05},
      {0x20, 0x01000000, 0x01, 0x04},   {0x06, 0x01000000, 0xFF00, 0x01},
  };
  ListedDevices backend;
  for (const Place& place : places) {
    backend.list.push_back(
        std::make_shared<DescribedDevice>(HIDProperties{{"VendorID", number(fanatec)},
                                                        {"ProductID", number(place.product)},
                                                        {"LocationID", number(place.location)},
                                                        {"PrimaryUsagePage", number(place.page)},
                                                        {"PrimaryUsage", number(place.usage)}}));
  }
  std::vector<std::string> ids;
  for (const auto& info : HIDEnumerator::devices(fanatec, backend)) ids.push_back(info.id);
  EXPECT_EQ(ids, (std::vector<std::string>{"0eb7:0006@01000000/ff00:1", "0eb7:0006@02000000/1:4",
                                           "0eb7:0020@01000000/1:4", "0eb7:0020@01000000/1:5",
                                           "0eb7:0020@01000000/ff00:1", "0eb7:0020@02000000/1:4"}));
}

TEST(HIDEnumeratorDevices, KeepTheOrderOfDevicesInOnePlace) {
  ListedDevices backend;
  std::vector<std::string> wanted;
  for (int i = 100; i > 0; --i) {
    wanted.push_back(std::to_string(i));
    backend.list.push_back(
        std::make_shared<DescribedDevice>(HIDProperties{{"SerialNumber", text(wanted.back())}}));
  }
  std::vector<std::string> serials;
  for (const auto& info : HIDEnumerator::devices(std::nullopt, backend)) {
    serials.push_back(info.serialNumber);
  }
  EXPECT_EQ(serials, wanted);
}

TEST(HIDEnumeratorDevices, AreThoseOfTheVendorThatWasAskedFor) {
  ListedDevices backend;
  EXPECT_TRUE(HIDEnumerator::devices(fanatec, backend).empty());
  EXPECT_TRUE(HIDEnumerator::devices(std::nullopt, backend).empty());
  EXPECT_EQ(backend.asked, (std::vector<std::optional<std::int64_t>>{fanatec, std::nullopt}));
}

HIDDeviceInfo device(std::int64_t vendorID, std::int64_t productID, std::string product = {}) {
  HIDDeviceInfo info;
  info.vendorID = vendorID;
  info.productID = productID;
  info.product = std::move(product);
  return info;
}

TEST(HIDDeviceInfo, IsFanatecByItsVendor) {
  for (const std::int64_t vendor : {0, 1, 0x0EB6, 0x0EB7, 0x0EB8, 0x10EB7, 0xFFFF}) {
    EXPECT_EQ(device(vendor, 0x0020).isFanatec(), vendor == 3767) << vendor;
  }
}

TEST(HIDDeviceInfo, KnowsItsProductByTheProductIDAlone) {
  EXPECT_EQ(device(fanatec, 0x0E03).knownProduct()->name, "CSL Elite Wheel Base");
  EXPECT_EQ(device(0x046D, 0x0E03).knownProduct()->name, "CSL Elite Wheel Base");
  EXPECT_EQ(device(fanatec, 0x1234).knownProduct(), std::nullopt);
}

TEST(HIDDeviceInfo, IsShownByTheBestNameThereIs) {
  struct Case {
    std::int64_t vendor;
    std::int64_t product;
    std::string text;
    std::string name;
  };
  const std::vector<Case> cases{
      {fanatec, 0x0E03, "", "CSL Elite Wheel Base"},
      {fanatec, 0x0E03, "Its own name", "CSL Elite Wheel Base"},
      {fanatec, 0x1234, "Its own name", "Its own name"},
      {fanatec, 0xAB34, "", "0EB7:AB34"},
      {fanatec, 0x0002, "", "0EB7:0002"},
      {0x046D, 0x0E03, "Its own name", "Its own name"},
      {0x046D, 0x0E03, "", "046D:0E03"},
      {0, 0, "", "0000:0000"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(device(c.vendor, c.product, c.text).displayName(), c.name);
  }
}

TEST(HIDDeviceInfo, TellsTheUsbPortFromTheLocation) {
  const std::vector<std::pair<std::int64_t, std::string>> cases{
      {0, ""},
      {0x03100000, "3-1"},
      {0x03140000, "3-1.4"},
      {0x01123456, "1-1.2.3.4.5.6"},
      {0x10F00000, "16-15"},
      {0xFF1F0000, "255-1.15"},
      {0x00140000, ""},
  };
  for (const auto& [locationID, port] : cases) {
    HIDDeviceInfo info;
    info.locationID = locationID;
    EXPECT_EQ(info.usbPort(), port) << locationID;
  }
}

// A device with output reports of these IDs and lengths. Its feature and input report would have a
// suitable length too.
HIDDeviceInfo withOutputs(const std::vector<std::pair<std::int64_t, std::int64_t>>& outputs) {
  HIDDeviceInfo info;
  info.reports.push_back({Kind::feature, 90, 7, 1, {}});
  info.reports.push_back({Kind::input, 91, 7, 1, {}});
  for (const auto& [id, length] : outputs) {
    info.reports.push_back({Kind::output, id, length, 1, {}});
  }
  return info;
}

TEST(HIDDeviceInfo, SendsCommandsOnTheOutputReportOfSevenOrEightBytes) {
  struct Case {
    std::vector<std::pair<std::int64_t, std::int64_t>> outputs;  // report ID, length
    std::optional<std::uint8_t> chosen;
  };
  const std::vector<Case> cases{
      {{}, std::nullopt},
      {{{1, 7}}, 1},
      {{{1, 8}}, 1},
      {{{0, 7}}, 0},
      {{{2, 63}, {5, 7}}, 5},
      {{{2, 63}, {3, 31}}, 3},
      {{{1, 3}, {2, 7}, {3, 63}}, 2},
      {{{1, 8}, {2, 7}}, 2},
      {{{1, 7}, {2, 7}}, 1},
      {{{3, 8}, {4, 8}}, 3},
      {{{1, 3}, {2, 8}, {3, 9}}, 2},
      {{{1, 6}, {2, 9}}, 1},
      {{{1, 9}, {2, 6}}, 2},
      {{{4, 9}, {5, 9}}, 4},
      {{{1, 63}}, 1},
      {{{1, 0}, {2, 63}}, 1},
      {{{255, 7}}, 255},
      {{{256, 63}, {255, 8}}, 255},
  };
  for (std::size_t i = 0; i < cases.size(); ++i) {
    EXPECT_EQ(withOutputs(cases[i].outputs).commandReportID(), cases[i].chosen) << i;
  }
}

TEST(HIDDeviceInfo, SendsCommandsOnTheFirstOfManyReportsOfALength) {
  std::vector<std::pair<std::int64_t, std::int64_t>> outputs;
  for (std::int64_t id = 1; id <= 200; ++id) outputs.emplace_back(id, id % 3 == 0 ? 7 : 63);
  EXPECT_EQ(withOutputs(outputs).commandReportID(), 3);
}

TEST(HIDDeviceInfo, SendsCommandsOnTheReportOfItsDescriptor) {
  EXPECT_EQ(infoOf({{"ReportDescriptor", Bytes{0x85, 0x01, 0x75, 0x08, 0x95, 0x07, 0x91, 0x02}}})
                .commandReportID(),
            1);
  EXPECT_EQ(infoOf({{"ReportDescriptor", joystick()}}).commandReportID(), 2);
  EXPECT_EQ(infoOf({{"ReportDescriptor", keyboard()}}).commandReportID(), 0);
  EXPECT_EQ(
      infoOf({{"ReportDescriptor", Bytes{0x75, 0x08, 0x95, 0x07, 0x81, 0x02}}}).commandReportID(),
      std::nullopt);
}

TEST(HIDDeviceInfoDeathTest, ACommandReportIDAboveTwoHundredFiftyFiveStopsTheProgram) {
  constexpr const char* line = "^quorvane: internal fault: a command report ID is above 255\n$";
  EXPECT_DEATH(withOutputs({{256, 7}}).commandReportID(), line);
  EXPECT_DEATH(withOutputs({{0xFFFFFFFF, 63}}).commandReportID(), line);
}

}  // namespace
}  // namespace quorvane::device_info_test
