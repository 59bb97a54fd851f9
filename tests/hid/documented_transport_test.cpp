#include <fmt/format.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <map>
#include <string>

#include "hid/device_info.h"
#include "simulator/simulated_base.h"
#include "tests/hid/fake_port.h"
#include "tests/protocol_document.h"

namespace quorvane::documented_transport_test {
namespace {

namespace Document = ProtocolDocument;
using Document::Cells;

Bytes documentedDescriptor() {
  Bytes descriptor;
  for (const std::string& line : Document::block("Report descriptor")) {
    const Bytes bytes = Document::bytes(line);
    descriptor.insert(descriptor.end(), bytes.begin(), bytes.end());
  }
  return descriptor;
}

TEST(DocumentedTransport, HasTheSimulatedDescriptor) {
  EXPECT_EQ(documentedDescriptor(), SimulatedBase::reportDescriptor());
}

TEST(DocumentedTransport, FindsTheDocumentedReportsInIt) {
  HIDDeviceInfo info;
  info.reports = HIDReportDescriptor(documentedDescriptor()).summaries();
  std::vector<Cells> reports;
  for (const HIDReportSummary& report : info.reports) {
    reports.push_back({std::string(rawValue(report.kind)), fmt::format("{:02x}", report.reportID),
                       std::to_string(report.byteLength)});
  }
  EXPECT_EQ(Document::table("Report descriptor", "kind"), reports);
  EXPECT_EQ(info.commandReportID(), 0x01);
}

TEST(DocumentedTransport, NamesDevicesAsDocumented) {
  for (const Cells& row : Document::table("The id of a device", "vendor")) {
    const auto device = std::make_shared<FakeDevice>();
    device->setProperty(HIDPropertyKey::vendorID, Document::hexNumber(row.at(0)));
    device->setProperty(HIDPropertyKey::productID, Document::hexNumber(row.at(1)));
    device->setProperty(HIDPropertyKey::locationID, Document::hexNumber(row.at(2)));
    device->setProperty(HIDPropertyKey::primaryUsagePage, Document::hexNumber(row.at(3)));
    device->setProperty(HIDPropertyKey::primaryUsage, Document::hexNumber(row.at(4)));
    EXPECT_EQ(HIDEnumerator::info(device).id, row.at(5));
  }
}

TEST(DocumentedTransport, HasTheDocumentedCodes) {
  const auto code = [](int error) { return fmt::format("0x{:08X}", hidReturnFromErrno(error)); };
  EXPECT_EQ(Document::table("Codes of the transport", "errno"),
            (std::vector<Cells>{{"ENODEV, ENOENT, ENXIO", code(ENODEV)},
                                {"EACCES, EPERM", code(EACCES)},
                                {"EBUSY", code(EBUSY)},
                                {"EIO", code(EIO)},
                                {"EPIPE", code(EPIPE)}}));
  EXPECT_EQ(code(ENOENT), code(ENODEV));
  EXPECT_EQ(code(ENXIO), code(ENODEV));
  EXPECT_EQ(code(EPERM), code(EACCES));
}

}  // namespace
}  // namespace quorvane::documented_transport_test
