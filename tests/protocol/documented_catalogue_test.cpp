#include <fmt/format.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "protocol/commands.h"
#include "protocol/identity_report.h"
#include "protocol/product.h"
#include "protocol/tuning_snapshot.h"
#include "protocol/wheel_status.h"
#include "tests/protocol_document.h"

namespace quorvane::documented_catalogue_test {
namespace {

namespace Document = ProtocolDocument;
using Document::Cells;

std::string menuName(TuningFamily family) {
  switch (family) {
    case TuningFamily::none:
      return "none";
    case TuningFamily::classic:
      return "classic";
    case TuningFamily::cslElite:
      return "CSL Elite";
    case TuningFamily::directDrive:
      return "direct drive";
  }
  return {};
}

IdentityReport identity(std::size_t offset, std::uint8_t byte) {
  Bytes report(IdentityReport::length);
  report[0] = IdentityReport::reportID;
  report[1] = IdentityReport::subID;
  report[offset] = byte;
  return IdentityReport::fromReport(report, {}).value();
}

TEST(DocumentedCatalogue, ListsEveryProduct) {
  std::vector<Cells> products;
  for (const FanatecProduct& product : FanatecProduct::all()) {
    products.push_back({fmt::format("0x{:04X}", product.productID), std::string(product.name),
                        std::string(rawValue(product.kind)), std::to_string(product.maxRotation),
                        std::to_string(product.autoRotation), menuName(product.tuningFamily)});
  }
  EXPECT_EQ(Document::table("Products", "product ID"), products);
}

TEST(DocumentedCatalogue, ListsEveryReportWithItsLength) {
  constexpr std::size_t idLength = 1;
  const auto text = [](std::size_t length) { return std::to_string(length); };
  EXPECT_EQ(TuningSnapshot::length, IdentityReport::length);
  EXPECT_EQ(
      Document::table("Reports", "report"),
      (std::vector<Cells>{
          {"FF", "from the base", text(TuningSnapshot::length),
           "[tuning report](#tuning-report) (byte 1 is 03), "
           "[identity report](#identity-report) (byte 1 is 08)"},
          {"01", "from the base", text(WheelStatus::length), "[wheel status](#wheel-status)"},
          {"FF", "to the base", text(idLength + FanatecCommands::tuningPayloadLength),
           "[tuning channel](#tuning-channel)"},
          {"command report", "to the base", text(idLength + FanatecCommands::shortPayloadLength),
           "[short commands](#short-commands)"},
      }));
}

// Every byte from the first parameter to the last is a parameter or documented as unused.
TEST(DocumentedCatalogue, HasTheBytesOfTheTuningReport) {
  std::vector<std::string> gaps;
  const auto& all = TuningParameter::allCases();
  for (std::size_t i = 2; i < all.size(); ++i) {
    for (std::size_t byte = all[i - 1].offset() + 1; byte < all[i].offset(); ++byte) {
      gaps.push_back(std::to_string(byte));
    }
  }
  ASSERT_EQ(gaps.size(), 3U);
  EXPECT_EQ(Document::table("Tuning report", "byte"),
            (std::vector<Cells>{
                {"0", "FF"},
                {"1", "03"},
                {"2",
                 "status: bits 0 to 3 the active set, bit 7 the mode (1 standard, 0 advanced), "
                 "bits 4 to 6 are not read"},
                {fmt::format("{} to {}", all[1].offset(), all.back().offset()),
                 fmt::format("the [parameters](#parameters); bytes {}, {} and {} belong to none",
                             gaps[0], gaps[1], gaps[2])},
                {fmt::format("{} to {}", all.back().offset() + 1, TuningSnapshot::length - 1),
                 "not read; sent back as they came"},
            }));
}

TEST(DocumentedCatalogue, ReadsStatusBytes) {
  for (const Cells& row : Document::table("Status byte", "byte")) {
    Bytes report(TuningSnapshot::length);
    report[0] = TuningSnapshot::reportID;
    report[1] = TuningSnapshot::subID;
    report[2] = Document::bytes(row.at(0)).at(0);
    const auto snapshot = TuningSnapshot::fromReport(report, {}).value();
    EXPECT_EQ(row, (Cells{row.at(0), std::to_string(snapshot.slot()),
                          std::string(snapshot.modeName()), snapshot.setName()}));
  }
}

TEST(DocumentedCatalogue, HasTheBytesOfTheIdentityReport) {
  EXPECT_EQ(
      Document::table("Identity report", "byte"),
      (std::vector<Cells>{{"0", "FF"},
                          {"1", "08"},
                          {std::to_string(IdentityReport::baseTypeOffset),
                           "base type, valid only when byte 3 is 00"},
                          {std::to_string(IdentityReport::layoutOffset),
                           "layout: 00, or another with an unknown base type"},
                          {std::to_string(IdentityReport::wheelOffset), "steering wheel code"},
                          {std::to_string(IdentityReport::moduleOffset), "button module code"},
                          {"others", "not read"}}));
  EXPECT_EQ(identity(IdentityReport::layoutOffset, 1).baseType(), std::nullopt);
}

TEST(DocumentedCatalogue, ListsEveryBaseType) {
  std::vector<Cells> types;
  for (const auto& [type, name] : IdentityReport::baseNames()) {
    types.push_back({std::to_string(type), std::string(name)});
  }
  EXPECT_EQ(Document::table("Base types", "type"), types);
}

TEST(DocumentedCatalogue, ListsEverySteeringWheel) {
  std::vector<Cells> wheels;
  for (int code = 0; code <= 0xFF; ++code) {
    const std::string name =
        identity(IdentityReport::wheelOffset, static_cast<std::uint8_t>(code)).wheelName();
    if (!name.starts_with("unknown")) wheels.push_back({fmt::format("0x{:02X}", code), name});
  }
  EXPECT_EQ(Document::table("Steering wheels", "code"), wheels);
}

TEST(DocumentedCatalogue, ListsEveryButtonModule) {
  std::vector<Cells> modules;
  for (int code = 0; code <= 0xFF; ++code) {
    const std::string name =
        identity(IdentityReport::moduleOffset, static_cast<std::uint8_t>(code)).moduleName();
    if (!name.starts_with("unknown")) modules.push_back({std::to_string(code), name});
  }
  EXPECT_EQ(Document::table("Button modules", "code"), modules);
}

TEST(DocumentedCatalogue, ReadsWheelStatus) {
  EXPECT_EQ(Document::table("Wheel status", "byte"),
            (std::vector<Cells>{
                {"0", "01"},
                {std::to_string(WheelStatus::wheelOffset), "ID of the steering wheel, two bytes"},
                {std::to_string(WheelStatus::firmwareOffset), "firmware version, two bytes"}}));
  for (const Cells& row : Document::table("Wheel status", "last four bytes")) {
    Bytes report(WheelStatus::wheelOffset);
    report[0] = WheelStatus::reportID;
    for (const std::uint8_t byte : Document::bytes(row.at(0))) report.push_back(byte);
    const auto status = WheelStatus::fromReport(report);
    EXPECT_EQ(row.at(1), status ? std::to_string(status->wheelID) : "none");
    EXPECT_EQ(row.at(2), status ? std::to_string(status->firmwareVersion) : "none");
  }
}

}  // namespace
}  // namespace quorvane::documented_catalogue_test
