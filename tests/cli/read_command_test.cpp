#include <gtest/gtest.h>

#include <regex>
#include <vector>

#include "cli/base_access.h"
#include "tests/cli/command_line_fixture.h"

namespace quorvane {
namespace {

using ReadCommand = CommandLineTest;

const char* const menuText =
    "  SEN  900 deg                  Sensitivity (steering angle)\n"
    "  FF   65 %                     Force feedback strength\n"
    "  SHO  100 %                    Wheel vibration motor\n"
    "  BLI  OFF                      Brake level indicator\n"
    "  FFS  PEA                      Force feedback scaling\n"
    "  FOR  100 %                    Force effect strength\n"
    "  SPR  100 %                    Spring effect strength\n"
    "  DPR  50 %                     Damper effect strength\n"
    "  NDP  25 %                     Natural damper\n"
    "  NFR  10 %                     Natural friction\n"
    "  brF  50 %                     Brake force (load cell)\n"
    "  FEI  100 %                    Force effect intensity\n"
    "  ACP  CbP (clutch bite point)  Analog paddle mode\n"
    "  INT  11                       FFB interpolation filter\n"
    "  NIN  5 %                      Natural inertia\n"
    "  FUL  0 %                      FullForce\n";

const char* const menuDump =
    "ff 03 82 db 41 0a 65 01 00 00 0a 0a 05 19 0a 00 32 64 00 01 0b 05 00 00 00 00 00 00 00 00 00 "
    "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 "
    "00 00";

const char* const identityDump =
    "ff 08 0a 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 1c 00 00 00 00 00 00 "
    "01 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 "
    "00 00";

TEST_F(ReadCommand, ShowsTheBaseAndItsMenu) {
  base();
  EXPECT_EQ(run("read"),
            (Outcome{ExitStatus::done,
                     std::string("CSL DD Wheel Base\n"
                                 "  Steering wheel  ClubSport Steering Wheel Formula V3\n"
                                 "  Button module   Podium Button Module Endurance\n"
                                 "  Menu            standard, set C (Custom)\n\n") +
                         menuText,
                     ""}));
}

TEST_F(ReadCommand, ShowsTheAdvancedMenuByTheNumberOfItsSet) {
  base().withBase([](SimulatedBase& simulated) {
    simulated.menu().toggleMode();
    simulated.menu().select(4);
  });
  EXPECT_NE(run("read").out.find("\n  Menu            advanced, set 4\n"), std::string::npos);
}

TEST_F(ReadCommand, GivesOneDocument) {
  base().setProperty(HIDPropertyKey::serialNumber, std::string("QV-1"));
  const Outcome outcome = run("--json read");
  EXPECT_EQ(outcome.status, ExitStatus::done);
  EXPECT_EQ(outcome.err, "");

  Json document = Json::parse(outcome.out);
  const std::string receivedAt = document["tuning"]["receivedAt"];
  EXPECT_TRUE(std::regex_match(receivedAt, std::regex(R"(\d{4}-\d\d-\d\dT\d\d:\d\d:\d\dZ)")))
      << receivedAt;
  document["tuning"]["receivedAt"] = "then";
  const Json wanted = {{"device",
                        {{"id", simulatedID},
                         {"name", simulatedName},
                         {"productID", 32},
                         {"serialNumber", "QV-1"},
                         {"node", ""}}},
                       {"identity",
                        {{"base", "CSL DD Wheel Base"},
                         {"wheel", "ClubSport Steering Wheel Formula V3"},
                         {"module", "Podium Button Module Endurance"},
                         {"raw", identityDump}}},
                       {"tuning",
                        {{"set", 2},
                         {"mode", "standard"},
                         {"receivedAt", "then"},
                         {"raw", menuDump},
                         {"values",
                          {{"SEN", 900},
                           {"FF", 65},
                           {"SHO", 100},
                           {"BLI", 101},
                           {"FFS", 1},
                           {"FOR", 100},
                           {"SPR", 100},
                           {"DPR", 50},
                           {"NDP", 25},
                           {"NFR", 10},
                           {"brF", 50},
                           {"FEI", 100},
                           {"ACP", 1},
                           {"INT", 11},
                           {"NIN", 5},
                           {"FUL", 0}}}}}};
  EXPECT_EQ(documentText(document), documentText(wanted));
}

TEST_F(ReadCommand, ListsTheParametersThatTheProductHas) {
  attach(0x0001);
  std::vector<std::string> codes;
  const Json document = Json::parse(run("read --json").out);
  for (const auto& [code, value] : document["tuning"]["values"].items()) codes.push_back(code);
  EXPECT_EQ(codes, (Lines{"SEN", "FF", "FOR", "SPR", "DPR", "brF", "FEI", "ACP"}));
}

TEST_F(ReadCommand, AsksForMenuAndIdentityAndNothingElse) {
  base();
  run("read");
  EXPECT_EQ(transcript(),
            (Lines{"open", "> ff 03 02 +61", "> ff 08 01 ff +60", "> ff 08 02 +61", "close"}));
}

TEST_F(ReadCommand, FindsTheAnswersAmongForeignReports) {
  change([](SimulatedBehaviour& behaviour) { behaviour.foreignReports = true; });
  EXPECT_EQ(run("read").status, ExitStatus::done);
}

TEST_F(ReadCommand, WaitsForALateAnswer) {
  change([](SimulatedBehaviour& behaviour) { behaviour.answerDelay = Seconds(1.9); });
  EXPECT_EQ(run("read").status, ExitStatus::done);
}

TEST_F(ReadCommand, ABaseThatTellsNoIdentityIsReadAllTheSame) {
  base().withBase([](SimulatedBase& simulated) { simulated.identityReport() = {0xFF, 0x7F}; });
  EXPECT_EQ(run("read"), (Outcome{ExitStatus::done,
                                  std::string(simulatedName) +
                                      "\n  Menu            standard, set C (Custom)\n\n" + menuText,
                                  ""}));
  EXPECT_EQ(Json::parse(run("read --json").out)["identity"], nullptr);
}

TEST_F(ReadCommand, TheDeviceOptionNamesTheBase) {
  attach(0x0020);
  attach(0x0006);
  const Outcome outcome = run({"--device", simulatedID, "read", "--json"});
  EXPECT_EQ(Json::parse(outcome.out)["device"]["id"], simulatedID);
}

TEST_F(ReadCommand, ASilentBaseTimesOut) {
  for (const bool tuningOnly : {false, true}) {
    change([&](SimulatedBehaviour& behaviour) {
      behaviour.silent = !tuningOnly;
      behaviour.tuningSilent = tuningOnly;
    });
    EXPECT_EQ(run("read"), (Outcome{ExitStatus::failed, "", std::string(timeoutText) + "\n"}));
    EXPECT_EQ(run("read --json"),
              (Outcome{ExitStatus::failed, errorDocument("timeout", timeoutText),
                       std::string(timeoutText) + "\n"}));
  }
}

TEST_F(ReadCommand, NoBaseIsAFailureThatSaysWhatToDo) {
  const std::string message = "HID I/O failed: device not found";
  const std::string messages =
      message + "\nNo base found. Power it on in PC mode and connect it.\n";
  EXPECT_EQ(run("read"), (Outcome{ExitStatus::failed, "", messages}));
  EXPECT_EQ(run("read --json"),
            (Outcome{ExitStatus::failed, errorDocument("ioFailed", message), messages}));
}

TEST_F(ReadCommand, MissingPermissionComesWithOneHint) {
  base().failOpenWith(HIDReturnCode::notPermitted);
  const std::string message = "HID I/O failed: " + describeHIDReturn(HIDReturnCode::notPermitted);
  const std::string messages = message + "\n" + permissionHint + "\n";
  EXPECT_EQ(run("read"), (Outcome{ExitStatus::failed, "", messages}));
  EXPECT_EQ(run("read --json"),
            (Outcome{ExitStatus::failed, errorDocument("ioFailed", message), messages}));
}

TEST_F(ReadCommand, ABaseInUseIsAFailureWithoutHint) {
  const auto taken = base().open(true);
  const std::string message =
      "HID I/O failed: " + describeHIDReturn(HIDReturnCode::exclusiveAccess);
  EXPECT_EQ(run("read"), (Outcome{ExitStatus::failed, "", message + "\n"}));
}

TEST_F(ReadCommand, ASendThatFailsIsAFailure) {
  change([](SimulatedBehaviour& behaviour) { behaviour.failSendsWith = 0xC005; });
  EXPECT_EQ(run("read"), (Outcome{ExitStatus::failed, "",
                                  "HID I/O failed: SetReport id 0xFF -> IOReturn 0x0000C005\n"}));
}

}  // namespace
}  // namespace quorvane
