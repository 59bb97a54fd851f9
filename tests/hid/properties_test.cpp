#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hid/port.h"
#include "tests/hid/descriptors.h"

namespace quorvane::properties_test {
namespace {

HIDProperties propertiesOf(const Bytes& descriptor) {
  HIDProperties properties;
  addDescriptorProperties(properties, descriptor);
  return properties;
}

std::optional<std::int64_t> number(const HIDProperties& properties, std::string_view key) {
  const auto found = properties.find(key);
  if (found == properties.end()) return std::nullopt;
  return std::get<std::int64_t>(found->second);
}

// The largest sizes of a descriptor's input, output and feature reports.
std::vector<std::int64_t> sizesOf(const Bytes& descriptor) {
  const HIDProperties properties = propertiesOf(descriptor);
  return {number(properties, "MaxInputReportSize").value_or(-1),
          number(properties, "MaxOutputReportSize").value_or(-1),
          number(properties, "MaxFeatureReportSize").value_or(-1)};
}

TEST(DescriptorProperties, HaveTheirKeys) {
  const HIDProperties wanted{
      {"ReportDescriptor", joystick()},         {"PrimaryUsagePage", std::int64_t{1}},
      {"PrimaryUsage", std::int64_t{4}},        {"MaxInputReportSize", std::int64_t{6}},
      {"MaxOutputReportSize", std::int64_t{8}}, {"MaxFeatureReportSize", std::int64_t{4}},
  };
  EXPECT_EQ(propertiesOf(joystick()), wanted);
}

TEST(DescriptorProperties, AnEmptyDescriptorAddsNothing) {
  EXPECT_TRUE(propertiesOf({}).empty());
  HIDProperties properties{{"Product", std::string("A base")}};
  addDescriptorProperties(properties, {});
  EXPECT_EQ(properties, (HIDProperties{{"Product", std::string("A base")}}));
}

TEST(DescriptorProperties, SizesCountTheReportIDWhereThereIsOne) {
  EXPECT_EQ(sizesOf(joystick()), (std::vector<std::int64_t>{6, 8, 4}));
  EXPECT_EQ(sizesOf(keyboard()), (std::vector<std::int64_t>{8, 1, 0}));
}

TEST(DescriptorProperties, TheLargestReportOfAKindCounts) {
  const Bytes descriptor = joined({{0x75, 0x08},
                                   {0x85, 0x01, 0x95, 0x07, 0x91, 0x02},
                                   {0x85, 0xFF, 0x95, 0x3F, 0x91, 0x02, 0x81, 0x02},
                                   {0x85, 0x02, 0x95, 0x21, 0x81, 0x02}});
  EXPECT_EQ(sizesOf(descriptor), (std::vector<std::int64_t>{64, 64, 0}));
}

TEST(DescriptorProperties, AKindWithoutReportsHasTheSizeZero) {
  EXPECT_EQ(sizesOf({0x85, 0x01}), (std::vector<std::int64_t>{0, 0, 0}));
  EXPECT_EQ(sizesOf({0x85, 0x01, 0x81, 0x02}), (std::vector<std::int64_t>{0, 0, 0}));
}

TEST(DescriptorProperties, SizesObeyPushAndPop) {
  // A report of 8 bytes. Its last 3 have the size and count that Pop restores.
  const Bytes popped{0x85, 0x01, 0x75, 0x08, 0x95, 0x03, 0xA4, 0x75, 0x01, 0x95,
                     0x28, 0x81, 0x02, 0xB4, 0x81, 0x02, 0x91, 0x02, 0xB1, 0x02};
  EXPECT_EQ(sizesOf(popped), (std::vector<std::int64_t>{9, 4, 4}));
  // Pop also restores the report ID.
  const Bytes nested{0x85, 0x01, 0x75, 0x08, 0x95, 0x3F, 0xA4, 0x85,
                     0x02, 0x95, 0x02, 0x81, 0x02, 0xB4, 0x81, 0x02};
  EXPECT_EQ(sizesOf(nested), (std::vector<std::int64_t>{64, 0, 0}));
}

TEST(DescriptorProperties, AReportOfBitsHasAByteMore) {
  EXPECT_EQ(sizesOf({0x75, 0x01, 0x95, 0x08, 0x81, 0x02}), (std::vector<std::int64_t>{1, 0, 0}));
  EXPECT_EQ(sizesOf({0x75, 0x01, 0x95, 0x09, 0x81, 0x02}), (std::vector<std::int64_t>{2, 0, 0}));
}

TEST(DescriptorProperties, WithoutACollectionThereIsNoPrimaryUsage) {
  const HIDProperties properties = propertiesOf({0x05, 0x01, 0x09, 0x04, 0x75, 0x08});
  EXPECT_EQ(number(properties, "PrimaryUsagePage"), std::nullopt);
  EXPECT_EQ(number(properties, "PrimaryUsage"), std::nullopt);
}

TEST(DescriptorProperties, ThePrimaryUsageIsThatOfTheFirstCollection) {
  const HIDProperties properties = propertiesOf(
      {0x06, 0x00, 0xFF, 0x0A, 0x34, 0x12, 0xA1, 0x01, 0xC0, 0x09, 0x01, 0xA1, 0x01, 0xC0});
  EXPECT_EQ(number(properties, "PrimaryUsagePage"), 0xFF00);
  EXPECT_EQ(number(properties, "PrimaryUsage"), 0x1234);
}

TEST(DescriptorProperties, ReplaceWhatWasThere) {
  HIDProperties properties{{"MaxInputReportSize", std::int64_t{999}},
                           {"ReportDescriptor", std::string("none")},
                           {"PrimaryUsage", std::int64_t{999}},
                           {"VendorID", std::int64_t{0x0EB7}}};
  addDescriptorProperties(properties, keyboard());
  EXPECT_EQ(number(properties, "MaxInputReportSize"), 8);
  EXPECT_EQ(number(properties, "PrimaryUsage"), 6);
  EXPECT_EQ(properties.at("ReportDescriptor"), HIDProperty(keyboard()));
  EXPECT_EQ(number(properties, "VendorID"), 0x0EB7);
}

TEST(HIDPropertyKey, IsWhatThePlatformCallsTheProperty) {
  EXPECT_EQ(HIDPropertyKey::vendorID, "VendorID");
  EXPECT_EQ(HIDPropertyKey::productID, "ProductID");
  EXPECT_EQ(HIDPropertyKey::product, "Product");
  EXPECT_EQ(HIDPropertyKey::manufacturer, "Manufacturer");
  EXPECT_EQ(HIDPropertyKey::serialNumber, "SerialNumber");
  EXPECT_EQ(HIDPropertyKey::transport, "Transport");
  EXPECT_EQ(HIDPropertyKey::locationID, "LocationID");
  EXPECT_EQ(HIDPropertyKey::primaryUsagePage, "PrimaryUsagePage");
  EXPECT_EQ(HIDPropertyKey::primaryUsage, "PrimaryUsage");
  EXPECT_EQ(HIDPropertyKey::versionNumber, "VersionNumber");
  EXPECT_EQ(HIDPropertyKey::maxInputReportSize, "MaxInputReportSize");
  EXPECT_EQ(HIDPropertyKey::maxOutputReportSize, "MaxOutputReportSize");
  EXPECT_EQ(HIDPropertyKey::maxFeatureReportSize, "MaxFeatureReportSize");
  EXPECT_EQ(HIDPropertyKey::reportDescriptor, "ReportDescriptor");
}

}  // namespace
}  // namespace quorvane::properties_test
