#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "protocol/commands.h"
#include "protocol/error.h"
#include "tests/protocol_document.h"

namespace quorvane::documented_packets_test {
namespace {

namespace Document = ProtocolDocument;
namespace Commands = FanatecCommands;
using Document::Cells;
using P = TuningParameter;

using Packets = std::map<std::string, Bytes>;

// The packets in the rows of a table, by name.
Packets documented(std::string_view heading, std::string_view column) {
  Packets packets;
  for (const Cells& row : Document::table(heading, column)) {
    packets[row.at(0)] = Document::bytes(row.at(1));
  }
  return packets;
}

TuningSnapshot documentedMenu() {
  return TuningSnapshot::fromReport(Document::bytes(Document::block("Tuning report").at(0)), {})
      .value();
}

TEST(DocumentedPackets, OfTheTuningChannelAreThoseThatAreBuilt) {
  using enum TuningLayout;
  EXPECT_EQ(
      documented("Tuning channel", "packet"),
      (Packets{
          {"request the menu", Commands::requestTuningSnapshot().wireBytes()},
          {"reset the menu", Commands::resetTuningToFactoryDefaults().wireBytes()},
          {"save into set 3", Commands::saveTuning(3).wireBytes()},
          {"select set 3, in place", Commands::selectTuningSlot(3, inPlace).wireBytes()},
          {"select set 3, with device ID", Commands::selectTuningSlot(3, deviceID).wireBytes()},
          {"toggle the mode", Commands::toggleAdvancedMode().wireBytes()},
          {"enable identity reports", Commands::enableIdentityReports(true).wireBytes()},
          {"disable identity reports", Commands::enableIdentityReports(false).wireBytes()},
          {"request the identity", Commands::requestIdentityReport().wireBytes()},
      }));
}

TEST(DocumentedPackets, WriteTheMenuThatIsDocumented) {
  Packets built;
  for (const TuningLayout layout : {TuningLayout::inPlace, TuningLayout::deviceID}) {
    built[std::string(rawValue(layout))] =
        Commands::writeTuning(documentedMenu(), P::forceFeedback, 80, layout, true).wireBytes();
  }
  Packets written;
  for (const Cells& row : Document::table("Writing a value", "layout")) {
    if (row.size() == 2) written[row.at(0)] = Document::bytes(row.at(1));
  }
  EXPECT_EQ(written, built);
}

// Checks the documented rule, not only the example, with a report whose bytes are all different.
TEST(DocumentedPackets, WriteEveryByteWhereTheRulePutsIt) {
  std::vector<Cells> rules = Document::table("Writing a value", "layout");
  std::erase_if(rules, [](const Cells& row) { return row.size() == 2; });  // the example
  EXPECT_EQ(rules, (std::vector<Cells>{
                       {"linux (in place)", "ff 03 00", "R[3] to R[63]", "o"},
                       {"sdk (with device ID)", "ff 03 00",
                        "R[2] with bits 4 to 7 cleared, then R[3] to R[62]", "o + 1"},
                   }));
  Bytes report{0xFF, 0x03, 0xB2};
  while (report.size() < TuningSnapshot::length) {
    report.push_back(static_cast<std::uint8_t>(0x40 + report.size()));
  }
  const auto menu = TuningSnapshot::fromReport(report, {}).value();
  for (const P parameter : P::allCases()) {
    Bytes inPlace{0xFF, 0x03, 0x00};
    inPlace.insert(inPlace.end(), report.begin() + 3, report.end());
    inPlace[parameter.offset()] = 0x11;
    EXPECT_EQ(Commands::writeTuning(menu, parameter, 0x11, TuningLayout::inPlace, true).wireBytes(),
              inPlace);
    Bytes withID{0xFF, 0x03, 0x00, 0x02};
    withID.insert(withID.end(), report.begin() + 3, report.end() - 1);
    withID[parameter.offset() + 1] = 0x11;
    EXPECT_EQ(
        Commands::writeTuning(menu, parameter, 0x11, TuningLayout::deviceID, true).wireBytes(),
        withID);
  }
}

TEST(DocumentedPackets, OfTheShortCommandsAreThoseThatAreBuilt) {
  const auto angle = Commands::setRotation(900, 0x01);
  const auto wake = Commands::wakeSequence(0x01);
  const auto acknowledge = Commands::tuningAckBurst(0x01, 1);
  EXPECT_EQ(documented("Short commands", "packet"),
            (Packets{
                {"steering angle, 1st", angle.at(0).wireBytes()},
                {"steering angle, 2nd", angle.at(1).wireBytes()},
                {"steering angle 900, 3rd", angle.at(2).wireBytes()},
                {"wake, 1st", wake.at(0).wireBytes()},
                {"wake, 2nd", wake.at(1).wireBytes()},
                {"wake, 3rd", wake.at(2).wireBytes()},
                {"acknowledge, 1st", acknowledge.at(0).wireBytes()},
                {"acknowledge, 2nd", acknowledge.at(1).wireBytes()},
            }));
}

TEST(DocumentedPackets, FailAsDocumented) {
  const std::vector<FanatecError> failures{
      FanatecError::outOfRange(P::forceFeedback, 101, {0, 100}),
      FanatecError::notAvailable(P::naturalDamper, "ClubSport Wheel Base V2"),
      FanatecError::timeout("tuning menu report (is the base in PC mode and on a supported "
                            "firmware?)"),
      FanatecError::ioFailed("device not found"),
      FanatecError::invalidReport("the base still reports the standard menu"),
      FanatecError::writeIgnored(P::forceFeedback, 65),
      FanatecError::noTuningSnapshot(),
      FanatecError::notConnected(),
      FanatecError::noOutputReport(),
  };
  ASSERT_EQ(failures.size(), std::variant_size_v<FanatecError::Case>);
  std::vector<Cells> rows;
  rows.reserve(failures.size());
  for (const FanatecError& failure : failures) {
    rows.push_back({std::string(failure.kind()), failure.errorDescription()});
  }
  EXPECT_EQ(Document::table("Failures", "kind"), rows);
}

}  // namespace
}  // namespace quorvane::documented_packets_test
