#include <gtest/gtest.h>

#include "cli/base_access.h"
#include "cli/command_line.h"
#include "tests/cli/attached_nodes.h"
#include "tests/cli/command_line_fixture.h"

namespace quorvane {
namespace {

using DevicesCommand = CommandLineTest;

constexpr const char* noBaseText = "No base found. Power it on in PC mode and connect it.\n";

TEST_F(DevicesCommand, DescribesEachBase) {
  attach(0x0020);
  attach(0x0006).setProperty(HIDPropertyKey::serialNumber, std::string("QV-1"));
  const Outcome wanted{
      ExitStatus::done,
      "Podium Wheel Base DD1\n"
      "  id       0eb7:0006@00000000/1:4\n"
      "  product  0x0006\n"
      "  serial   QV-1\n"
      "  node     none (simulated)\n"
      "  access   yes\n"
      "  reports  input 0x01 (33 bytes), input 0xff (63 bytes), output 0x01 (7 bytes), "
      "output 0xff (63 bytes)\n"
      "CSL DD / GT DD Pro / ClubSport DD\n"
      "  id       0eb7:0020@00000000/1:4\n"
      "  product  0x0020\n"
      "  serial   none\n"
      "  node     none (simulated)\n"
      "  access   yes\n"
      "  reports  input 0x01 (33 bytes), input 0xff (63 bytes), output 0x01 (7 bytes), "
      "output 0xff (63 bytes)\n",
      ""};
  EXPECT_EQ(run("devices"), wanted);
}

TEST_F(DevicesCommand, GivesOneDocument) {
  base().setProperty(HIDPropertyKey::serialNumber, std::string("QV-1"));
  const Outcome outcome = run("devices --json");
  const Json wanted = {
      {"devices",
       Json::array({{{"id", simulatedID},
                     {"name", simulatedName},
                     {"productID", 32},
                     {"serialNumber", "QV-1"},
                     {"node", ""},
                     {"accessible", true},
                     {"commandReportID", 1},
                     {"reports", Json::array({
                                     {{"kind", "input"}, {"reportID", 1}, {"byteLength", 33}},
                                     {{"kind", "input"}, {"reportID", 255}, {"byteLength", 63}},
                                     {{"kind", "output"}, {"reportID", 1}, {"byteLength", 7}},
                                     {{"kind", "output"}, {"reportID", 255}, {"byteLength", 63}},
                                 })}}})}};
  EXPECT_EQ(documentText(outcome.out), documentText(wanted));
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(outcome.status, ExitStatus::done);
}

TEST_F(DevicesCommand, ABaseWithoutOutputReportsHasNoCommandReport) {
  base().setProperty(HIDPropertyKey::reportDescriptor,
                     Bytes{0x75, 0x08, 0x95, 0x08, 0x81, 0x02});  // one input report
  const Json document = Json::parse(run("devices --json").out);
  EXPECT_EQ(document["devices"][0]["commandReportID"], nullptr);
}

TEST_F(DevicesCommand, OpensNothingAndSendsNothing) {
  base();
  run("devices");
  EXPECT_EQ(transcript(), Lines{});
}

TEST_F(DevicesCommand, NoBaseIsNoFailure) {
  EXPECT_EQ(run("devices"), (Outcome{ExitStatus::done, "", noBaseText}));
  EXPECT_EQ(run("devices --json"),
            (Outcome{ExitStatus::done, "{\n  \"devices\": []\n}\n", noBaseText}));
}

TEST_F(DevicesCommand, ShowsOnlyTheNamedBase) {
  attach(0x0020);
  attach(0x0006);
  const Json document = Json::parse(run("--device 0eb7:0020@00000000/1:4 devices --json").out);
  ASSERT_EQ(document["devices"].size(), 1U);
  EXPECT_EQ(document["devices"][0]["productID"], 32);
  EXPECT_EQ(run("--device other devices"), (Outcome{ExitStatus::done, "", noBaseText}));
}

TEST_F(DevicesCommand, HintsOnceAtMissingPermission) {
  AttachedNodes nodes;
  nodes.add(0x0020, "", "/dev/hidraw4", false);
  nodes.add(0x0020, "", "/dev/hidraw5", false);
  nodes.add(0x0020, "", "/dev/hidraw6");
  CapturedStream out;
  CapturedStream err;
  const World world{{nodes, usb_}, out.file(), err.file(), {}};
  EXPECT_EQ(runCommandLine({"devices", "--json"}, world), ExitStatus::done);
  EXPECT_EQ(err.text(), std::string(permissionHint) + "\n");
  std::vector<std::pair<std::string, bool>> access;
  const Json document = Json::parse(out.text());
  for (const Json& device : document["devices"]) {
    access.emplace_back(device["node"], device["accessible"]);
  }
  EXPECT_EQ(access, (std::vector<std::pair<std::string, bool>>{
                        {"/dev/hidraw4", false}, {"/dev/hidraw5", false}, {"/dev/hidraw6", true}}));
}

TEST_F(DevicesCommand, ShowsNodeAndMissingAccess) {
  AttachedNodes nodes;
  nodes.add(0x0020, "", "/dev/hidraw4", false);
  CapturedStream out;
  CapturedStream err;
  const World world{{nodes, usb_}, out.file(), err.file(), {}};
  EXPECT_EQ(runCommandLine({"devices"}, world), ExitStatus::done);
  EXPECT_NE(out.text().find("\n  node     /dev/hidraw4\n  access   no\n"), std::string::npos)
      << out.text();
}

}  // namespace
}  // namespace quorvane
