#include "simulator/simulated_base.h"

#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "hid/device_info.h"
#include "protocol/identity_report.h"
#include "tests/hid_codes.h"

namespace quorvane {
namespace {

using enum TuningParameter::Case;
using Lines = std::vector<std::string>;
using std::chrono::milliseconds;

FanatecProduct known(std::int64_t productID) { return *FanatecProduct::lookup(productID); }

class SimulatedBaseTest : public testing::Test {
 protected:
  void TearDown() override { EXPECT_EQ(base_.violations(), Lines{}); }

  HIDReturn send(const HIDReportPacket& packet) { return base_.receive(packet.wireBytes(), now_); }

  // All reports that are due now.
  std::vector<Bytes> takeDue() {
    std::vector<Bytes> reports;
    while (auto report = base_.takeDue(now_)) reports.push_back(std::move(*report));
    return reports;
  }

  std::vector<Bytes> ask() {
    EXPECT_EQ(send(FanatecCommands::requestTuningSnapshot()), HIDReturnCode::success);
    return takeDue();
  }

  std::vector<Bytes> askForIdentity() {
    EXPECT_EQ(send(FanatecCommands::enableIdentityReports(true)), HIDReturnCode::success);
    EXPECT_EQ(send(FanatecCommands::requestIdentityReport()), HIDReturnCode::success);
    return takeDue();
  }

  // Writes one value the way a session does.
  void write(TuningParameter parameter, std::int64_t value, TuningLayout layout) {
    const auto snapshot = TuningSnapshot::fromReport(base_.menu().report(), {});
    EXPECT_EQ(send(FanatecCommands::writeTuning(
                  *snapshot, parameter, parameter.encode(value, base_.product()), layout, true)),
              HIDReturnCode::success);
  }

  std::int64_t value(TuningParameter parameter) {
    return TuningSnapshot::fromReport(base_.menu().report(), {})->value(parameter, base_.product());
  }

  SimulatedBase base_{known(defaultSimulatedProduct)};
  Monotonic::time_point now_{};
};

TEST_F(SimulatedBaseTest, AFreshBaseLooksLivedIn) {
  EXPECT_EQ(base_.menu().activeSet(), 2);
  EXPECT_EQ(value(sensitivity), 900);
  EXPECT_EQ(value(forceFeedback), 65);
  EXPECT_EQ(value(naturalInertia), 5);
  EXPECT_TRUE(base_.isPlugged());
  EXPECT_EQ(takeDue(), std::vector<Bytes>{});
  EXPECT_EQ(base_.nextDue(now_), std::nullopt);
}

TEST_F(SimulatedBaseTest, AnswersARequestWithItsMenuAtOnce) {
  EXPECT_EQ(ask(), (std::vector<Bytes>{base_.menu().report()}));
  EXPECT_EQ(takeDue(), std::vector<Bytes>{});
}

TEST_F(SimulatedBaseTest, AnAnswerShowsTheMenuAsItWasWhenAsked) {
  base_.behaviour().answerDelay = Seconds(1);
  const Bytes before = base_.menu().report();
  EXPECT_EQ(ask(), std::vector<Bytes>{});
  base_.menu().put(forceFeedback, 42);
  now_ += milliseconds(1000);
  EXPECT_EQ(takeDue(), (std::vector<Bytes>{before}));
}

TEST_F(SimulatedBaseTest, AnswersIdentityRequestsOnceTheyAreEnabled) {
  send(FanatecCommands::requestIdentityReport());
  EXPECT_EQ(takeDue(), std::vector<Bytes>{});
  EXPECT_EQ(askForIdentity(), (std::vector<Bytes>{base_.identityReport()}));
  send(FanatecCommands::enableIdentityReports(false));
  send(FanatecCommands::requestIdentityReport());
  EXPECT_EQ(takeDue(), std::vector<Bytes>{});
}

TEST_F(SimulatedBaseTest, ItsIdentityNamesTheBaseTheWheelAndTheModule) {
  const std::vector<std::pair<std::int64_t, std::string>> cases{
      {0x0001, "ClubSport Wheel Base V2"},        {0x0004, "ClubSport Wheel Base V2.5"},
      {0x0005, "CSL Elite Wheel Base+ (PS4)"},    {0x0006, "Podium Wheel Base DD1"},
      {0x0007, "Podium Wheel Base DD2"},          {0x0020, "CSL DD Wheel Base"},
      {0x0E03, "CSL Elite Wheel Base (rev 1.1)"},
  };
  for (const auto& [productID, name] : cases) {
    SimulatedBase each(known(productID));
    const auto identity = IdentityReport::fromReport(each.identityReport(), {});
    ASSERT_TRUE(identity);
    EXPECT_EQ(identity->baseName(), name);
    EXPECT_EQ(identity->wheelName(), "ClubSport Steering Wheel Formula V3");
    EXPECT_EQ(identity->moduleCode(), 1);
  }
}

TEST_F(SimulatedBaseTest, ObeysWritesInItsOwnLayout) {
  for (const TuningLayout layout : {TuningLayout::inPlace, TuningLayout::deviceID}) {
    base_.behaviour().layout = layout;
    write(forceFeedback, 42, layout);
    EXPECT_EQ(value(forceFeedback), 42);
    write(fullForce, 7, layout);
    EXPECT_EQ(value(fullForce), 7);
    write(forceFeedback, 65, layout);
    EXPECT_EQ(value(forceFeedback), 65);
  }
  EXPECT_EQ(takeDue(), std::vector<Bytes>{});
}

TEST_F(SimulatedBaseTest, AWriteInTheOtherLayoutLandsOneByteAside) {
  base_.behaviour().layout = TuningLayout::inPlace;
  write(forceEffectIntensity, 40, TuningLayout::deviceID);
  EXPECT_NE(value(forceEffectIntensity), 40);
}

TEST_F(SimulatedBaseTest, IgnoresWritesOfTheParametersThatItWasToldTo) {
  for (const TuningLayout layout : {TuningLayout::inPlace, TuningLayout::deviceID}) {
    base_.behaviour().layout = layout;
    base_.behaviour().ignored = {forceFeedback, slot};
    write(forceFeedback, 42, layout);
    EXPECT_EQ(value(forceFeedback), 65);
    write(damperEffect, 70, layout);
    EXPECT_EQ(value(damperEffect), 70);
    base_.behaviour().ignored.clear();
    write(forceFeedback, 42, layout);
    EXPECT_EQ(value(forceFeedback), 42);
    write(forceFeedback, 65, layout);
  }
}

TEST_F(SimulatedBaseTest, KeepsNoMoreOfAValueThanItWasToldTo) {
  for (const TuningLayout layout : {TuningLayout::inPlace, TuningLayout::deviceID}) {
    base_.behaviour().layout = layout;
    base_.behaviour().most = {{forceFeedback, 70}, {slot, 1}};
    write(forceFeedback, 80, layout);
    EXPECT_EQ(value(forceFeedback), 70);
    write(forceFeedback, 69, layout);
    EXPECT_EQ(value(forceFeedback), 69);
    EXPECT_EQ(base_.menu().activeSet(), 2);
  }
}

TEST_F(SimulatedBaseTest, SendsTheMenuAsItWasJustBeforeTheAnswerWhenToldTo) {
  base_.behaviour().staleAnswers = true;
  const Bytes first = base_.menu().report();
  EXPECT_EQ(ask(), (std::vector<Bytes>{first})) << "there was no other menu yet";
  now_ += milliseconds(10);
  EXPECT_EQ(takeDue(), (std::vector<Bytes>{first}));
  write(forceFeedback, 42, TuningLayout::deviceID);
  write(forceFeedback, 42, TuningLayout::deviceID);
  EXPECT_EQ(ask(), (std::vector<Bytes>{first}));
  now_ += milliseconds(9);
  EXPECT_EQ(takeDue(), std::vector<Bytes>{});
  now_ += milliseconds(1);
  EXPECT_EQ(takeDue(), (std::vector<Bytes>{base_.menu().report()}));
  EXPECT_EQ(askForIdentity(), (std::vector<Bytes>{base_.identityReport()}));
}

TEST_F(SimulatedBaseTest, FailsAsManySendsAsItWasToldTo) {
  base_.behaviour().failSendsWith = 0x0000C005;
  base_.behaviour().failSendsFrom = 1;
  base_.behaviour().failSendsCount = 2;
  Bytes packet{0xFF, 0x03, 0x7E};
  packet.resize(64);
  for (const HIDReturn code : {0U, 0x0000C005U, 0x0000C005U, 0U}) {
    EXPECT_EQ(base_.receive(packet, now_), code);
  }
}

TEST_F(SimulatedBaseTest, AnotherBaseTakesItsPlace) {
  SimulatedBase base(known(defaultSimulatedProduct));
  base.behaviour().silent = true;
  base.receive(Bytes{}, now_);
  base.unplug();
  base.plug(known(0x0006));
  EXPECT_TRUE(base.isPlugged());
  EXPECT_EQ(base.plugCount(), 2);
  EXPECT_EQ(base.product().productID, 0x0006);
  EXPECT_EQ(IdentityReport::fromReport(base.identityReport(), {})->baseName(),
            "Podium Wheel Base DD1");
  EXPECT_FALSE(base.behaviour().silent);
  EXPECT_EQ(base.violations().size(), 1U) << "what callers did wrong is not forgotten";
}

TEST_F(SimulatedBaseTest, ObeysTheMenuCommands) {
  for (const TuningLayout layout : {TuningLayout::inPlace, TuningLayout::deviceID}) {
    for (int set = 1; set <= SimulatedMenu::setCount; ++set) {
      send(FanatecCommands::selectTuningSlot(set, layout));
      EXPECT_EQ(base_.menu().activeSet(), set);
    }
    send(FanatecCommands::selectTuningSlot(9, layout));
    EXPECT_EQ(base_.menu().activeSet(), 5);
    send(FanatecCommands::selectTuningSlot(0, layout));
    EXPECT_EQ(base_.menu().activeSet(), 5);
  }
  send(FanatecCommands::toggleAdvancedMode());
  EXPECT_TRUE(base_.menu().isAdvanced());

  send(FanatecCommands::selectTuningSlot(2, TuningLayout::inPlace));
  send(FanatecCommands::saveTuning(4));
  send(FanatecCommands::selectTuningSlot(4, TuningLayout::inPlace));
  EXPECT_EQ(value(forceFeedback), 65);

  send(FanatecCommands::resetTuningToFactoryDefaults());
  EXPECT_EQ(base_.menu().activeSet(), 1);
  EXPECT_FALSE(base_.menu().isAdvanced());
  EXPECT_EQ(value(forceFeedback), 100);
  EXPECT_EQ(takeDue(), std::vector<Bytes>{});
}

TEST_F(SimulatedBaseTest, ShortCommandsLeaveTheMenuAlone) {
  const Bytes before = base_.menu().report();
  for (const auto& packet : FanatecCommands::setRotation(900, 1)) send(packet);
  for (const auto& packet : FanatecCommands::tuningAckBurst(1, 4)) send(packet);
  for (const auto& packet : FanatecCommands::wakeSequence(1)) send(packet);
  EXPECT_EQ(base_.menu().report(), before);
  EXPECT_EQ(takeDue(), std::vector<Bytes>{});
}

TEST_F(SimulatedBaseTest, UnknownCommandsChangeNothing) {
  const Bytes before = base_.menu().report();
  for (const Bytes& start : {Bytes{0xFF, 0x03, 0x7E}, Bytes{0xFF, 0x08, 0x7E},
                             Bytes{0xFF, 0x55, 0x02}, Bytes{0xFF, 0x03, 0x05}}) {
    Bytes packet = start;
    packet.resize(64);
    EXPECT_EQ(base_.receive(packet, now_), HIDReturnCode::success);
  }
  EXPECT_EQ(base_.menu().report(), before);
  EXPECT_EQ(takeDue(), std::vector<Bytes>{});
}

TEST_F(SimulatedBaseTest, AnswersLateWhenToldTo) {
  base_.behaviour().answerDelay = Seconds(1.5);
  EXPECT_EQ(ask(), std::vector<Bytes>{});
  EXPECT_EQ(base_.nextDue(now_), now_ + milliseconds(1500));
  now_ += milliseconds(1499);
  EXPECT_EQ(takeDue(), std::vector<Bytes>{});
  now_ += milliseconds(1);
  EXPECT_EQ(takeDue(), (std::vector<Bytes>{base_.menu().report()}));
  EXPECT_EQ(base_.nextDue(now_), std::nullopt);
}

TEST_F(SimulatedBaseTest, ReportsBecomeDueInTheOrderOfTheirTimes) {
  base_.behaviour().answerDelay = Seconds(1);
  ask();
  base_.sendReport({0x01, 2}, now_);
  base_.behaviour().answerDelay = Seconds(0.5);
  askForIdentity();
  now_ += milliseconds(2000);
  EXPECT_EQ(takeDue(), (std::vector<Bytes>{base_.identityReport(), base_.menu().report()}));
}

TEST_F(SimulatedBaseTest, ReportsOfOneTimeKeepTheirOrder) {
  base_.sendReport({1}, now_);
  base_.sendReport({2}, now_);
  base_.sendReport({}, now_);
  base_.sendReport({3}, now_);
  EXPECT_EQ(takeDue(), (std::vector<Bytes>{{1}, {2}, {}, {3}}));
}

TEST_F(SimulatedBaseTest, IsSilentWhenToldTo) {
  base_.behaviour().silent = true;
  EXPECT_EQ(ask(), std::vector<Bytes>{});
  EXPECT_EQ(askForIdentity(), std::vector<Bytes>{});
  write(forceFeedback, 42, TuningLayout::deviceID);
  EXPECT_EQ(value(forceFeedback), 42);
  base_.sendReport({1}, now_);
  EXPECT_EQ(takeDue(), (std::vector<Bytes>{{1}}));

  base_.behaviour().silent = false;
  base_.behaviour().tuningSilent = true;
  EXPECT_EQ(ask(), std::vector<Bytes>{});
  EXPECT_EQ(askForIdentity().size(), 1U);
}

TEST_F(SimulatedBaseTest, MixesInForeignReportsWhenToldTo) {
  base_.behaviour().foreignReports = true;
  const auto reports = ask();
  ASSERT_EQ(reports.size(), 4U);
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_FALSE(TuningSnapshot::fromReport(reports[i], {}));
    EXPECT_FALSE(IdentityReport::fromReport(reports[i], {}));
  }
  EXPECT_EQ(reports[3], base_.menu().report());
  EXPECT_EQ(askForIdentity().back(), base_.identityReport());
}

TEST_F(SimulatedBaseTest, StreamsItsStatusEveryMillisecondWhenToldTo) {
  base_.behaviour().streamWheelStatus = true;
  EXPECT_EQ(takeDue(), (std::vector<Bytes>{base_.wheelStatusReport()}));
  EXPECT_EQ(base_.nextDue(now_), now_ + milliseconds(1));
  now_ += milliseconds(5);
  EXPECT_EQ(takeDue(), std::vector<Bytes>(5, base_.wheelStatusReport()));
  EXPECT_EQ(takeDue(), std::vector<Bytes>{});
  base_.behaviour().streamWheelStatus = false;
  now_ += milliseconds(10);
  EXPECT_EQ(takeDue(), std::vector<Bytes>{});
  EXPECT_EQ(base_.nextDue(now_), std::nullopt);
}

TEST_F(SimulatedBaseTest, OfAStreamThatNobodyFetchesItKeepsAFewReports) {
  constexpr std::size_t few = 8;
  base_.behaviour().streamWheelStatus = true;
  takeDue();
  now_ += milliseconds(100000);
  EXPECT_LE(takeDue().size(), few);
  for (int i = 0; i < 1000; ++i) {
    now_ += milliseconds(1);
    base_.nextDue(now_);
  }
  EXPECT_EQ(takeDue().size(), few);
  now_ += milliseconds(3);
  EXPECT_EQ(takeDue().size(), 3U);
}

TEST_F(SimulatedBaseTest, AStreamDoesNotHoldUpAnAnswer) {
  base_.behaviour().streamWheelStatus = true;
  base_.behaviour().answerDelay = Seconds(0.0025);
  ask();
  now_ += milliseconds(4);
  const auto reports = takeDue();
  ASSERT_EQ(reports.size(), 5U);
  EXPECT_EQ(reports[2], base_.menu().report());
}

TEST_F(SimulatedBaseTest, ItsStatusReportSaysWhichWheelIsAttached) {
  base_.attachWheel(0x1234, 0x5678);
  const Bytes report = base_.wheelStatusReport();
  ASSERT_EQ(report.size(), 34U);
  EXPECT_EQ(report[0], 0x01);
  EXPECT_EQ((Bytes{report.begin() + 30, report.end()}), (Bytes{0x34, 0x12, 0x78, 0x56}));
  EXPECT_EQ(base_.identityReport()[24], 0x34);
  const auto status = WheelStatus::fromReport(report);
  ASSERT_TRUE(status);
  EXPECT_EQ(status->wheelID, 0x1234);
  EXPECT_EQ(status->firmwareVersion, 0x5678);
  base_.attachWheel(0xFF, 0);
  EXPECT_FALSE(WheelStatus::fromReport(base_.wheelStatusReport()));
}

TEST_F(SimulatedBaseTest, AValueTurnedAtTheWheelIsReportedUnasked) {
  base_.turn(forceFeedback, 42, now_);
  EXPECT_EQ(value(forceFeedback), 42);
  EXPECT_EQ(takeDue(), (std::vector<Bytes>{base_.menu().report()}));
}

TEST_F(SimulatedBaseTest, GivesItsInputReportsOnDemandAndNoOther) {
  EXPECT_EQ(base_.getReport(HIDReportKind::input, 0x01), base_.wheelStatusReport());
  EXPECT_EQ(base_.getReport(HIDReportKind::input, 0xFF), base_.menu().report());
  EXPECT_EQ(base_.getReport(HIDReportKind::input, 0x02), std::nullopt);
  EXPECT_EQ(base_.getReport(HIDReportKind::feature, 0x01), std::nullopt);
  base_.unplug();
  EXPECT_EQ(base_.getReport(HIDReportKind::input, 0x01), std::nullopt);
}

TEST_F(SimulatedBaseTest, RefusesPacketsFromTheOneThatItWasToldTo) {
  base_.behaviour().failSendsWith = otherCode;
  base_.behaviour().failSendsFrom = 2;
  const auto request = FanatecCommands::toggleAdvancedMode();
  EXPECT_EQ(send(request), HIDReturnCode::success);
  EXPECT_EQ(send(request), HIDReturnCode::success);
  EXPECT_EQ(send(request), otherCode);
  EXPECT_EQ(send(request), otherCode);
  EXPECT_FALSE(base_.menu().isAdvanced());
  base_.behaviour().failSendsWith = HIDReturnCode::success;
  EXPECT_EQ(send(request), HIDReturnCode::success);
  EXPECT_TRUE(base_.menu().isAdvanced());
}

TEST_F(SimulatedBaseTest, LeavesAfterThePacketThatItWasToldTo) {
  base_.behaviour().unplugAfter = 2;
  EXPECT_EQ(ask().size(), 1U);
  EXPECT_TRUE(base_.isPlugged());
  EXPECT_EQ(ask(), std::vector<Bytes>{});  // it takes the packet and leaves before the answer
  EXPECT_FALSE(base_.isPlugged());
  EXPECT_EQ(send(FanatecCommands::requestTuningSnapshot()), HIDReturnCode::noDevice);
}

TEST_F(SimulatedBaseTest, UnpluggedItForgetsWhatWasNotDelivered) {
  base_.behaviour().streamWheelStatus = true;
  base_.behaviour().answerDelay = Seconds(1);
  ask();
  base_.unplug();
  now_ += milliseconds(2000);
  base_.sendReport({1}, now_);
  EXPECT_EQ(takeDue(), std::vector<Bytes>{});
  EXPECT_EQ(base_.nextDue(now_), std::nullopt);
  EXPECT_EQ(send(FanatecCommands::requestTuningSnapshot()), HIDReturnCode::noDevice);
}

TEST_F(SimulatedBaseTest, PluggedAgainItKeepsItsMenuAndForgetsTheDialogue) {
  askForIdentity();
  base_.menu().select(4);
  base_.menu().put(forceFeedback, 42);
  const Bytes menu = base_.menu().report();
  base_.behaviour().unplugAfter = 3;
  base_.unplug();
  base_.plug();
  EXPECT_TRUE(base_.isPlugged());
  EXPECT_EQ(base_.menu().report(), menu);
  send(FanatecCommands::requestIdentityReport());
  EXPECT_EQ(takeDue(), std::vector<Bytes>{});  // identity reports must be enabled again
  EXPECT_EQ(ask().size(), 1U);
  EXPECT_TRUE(base_.isPlugged());  // unplugAfter counts the packets since the last plugging
}

TEST(SimulatedBasePolice, ReportsPacketsThatBreakTheRules) {
  struct Case {
    Bytes packet;
    Lines violations;
  };
  const std::vector<Case> cases{
      {{}, {"an empty packet"}},
      {{0xFF}, {"1 bytes on report 0xff instead of 64"}},
      {Bytes(63, 0xFF), {"63 bytes on report 0xff instead of 64"}},
      {Bytes(65, 0xFF), {"65 bytes on report 0xff instead of 64"}},
      {Bytes(64, 0xFF), {}},
      {Bytes(7, 0x01), {"7 bytes on report 0x01 instead of 8"}},
      {Bytes(9, 0x01), {"9 bytes on report 0x01 instead of 8"}},
      {Bytes(8, 0x01), {}},
      {Bytes(8, 0x02), {"a packet on report 0x02, which has no output"}},
      {Bytes(8, 0x00), {"a packet on report 0x00, which has no output"}},
  };
  for (const Case& broken : cases) {
    SimulatedBase base(known(defaultSimulatedProduct));
    EXPECT_EQ(base.receive(broken.packet, {}), HIDReturnCode::success);
    EXPECT_EQ(base.violations(), broken.violations);
  }
}

TEST(SimulatedBaseDescription, SaysWhatADeviceOfItsProductSays) {
  SimulatedBase base(known(0x0020));
  base.serialNumber = "S1";
  const HIDProperties properties = base.properties();
  const auto expect = [&](std::string_view key, const HIDProperty& value) {
    const auto found = properties.find(key);
    ASSERT_NE(found, properties.end()) << key;
    EXPECT_TRUE(found->second == value) << key;
  };
  expect(HIDPropertyKey::vendorID, Fanatec::vendorID);
  expect(HIDPropertyKey::productID, std::int64_t{0x0020});
  expect(HIDPropertyKey::product, std::string("CSL DD / GT DD Pro / ClubSport DD"));
  expect(HIDPropertyKey::manufacturer, std::string("Fanatec"));
  expect(HIDPropertyKey::serialNumber, std::string("S1"));
  expect(HIDPropertyKey::transport, std::string("USB"));
  expect(HIDPropertyKey::primaryUsagePage, std::int64_t{1});
  expect(HIDPropertyKey::primaryUsage, std::int64_t{4});
  expect(HIDPropertyKey::maxInputReportSize, std::int64_t{64});
  expect(HIDPropertyKey::maxOutputReportSize, std::int64_t{64});
  expect(HIDPropertyKey::maxFeatureReportSize, std::int64_t{0});
  expect(HIDPropertyKey::reportDescriptor, SimulatedBase::reportDescriptor());
  EXPECT_FALSE(SimulatedBase(known(0x0020)).properties().contains(HIDPropertyKey::serialNumber));
}

TEST(SimulatedBaseDescription, ItsDescriptorNamesTheReportsThatItUses) {
  using Kind = HIDReportSummary::Kind;
  const HIDReportDescriptor descriptor(SimulatedBase::reportDescriptor());
  std::vector<std::tuple<Kind, std::int64_t, std::int64_t>> reports;
  for (const auto& summary : descriptor.summaries()) {
    reports.emplace_back(summary.kind, summary.reportID, summary.byteLength);
  }
  EXPECT_EQ(reports, (decltype(reports){{Kind::input, 0x01, 33},
                                        {Kind::input, 0xFF, 63},
                                        {Kind::output, 0x01, 7},
                                        {Kind::output, 0xFF, 63}}));
}

TEST(SimulatableProduct, IsFoundByItsIDOrAUniquePartOfItsName) {
  const std::vector<std::pair<std::string, std::optional<std::int64_t>>> cases{
      {"0020", 0x0020},
      {"0x20", 0x0020},
      {"20", 0x0020},
      {"0e03", 0x0E03},
      {"E03", 0x0E03},
      {"1", 0x0001},
      {"dd1", 0x0006},
      {"DD2", 0x0007},
      {"gt dd pro", 0x0020},
      {"V2.5", 0x0004},
      {"ClubSport Wheel Base V2", 0x0001},
      {"csl elite wheel base", 0x0E03},
      {"ps4", 0x0005},
      {"podium", std::nullopt},      // two
      {"wheel base", std::nullopt},  // many
      {"", std::nullopt},
      {"0011", std::nullopt},     // without a menu
      {"6204", std::nullopt},     // pedals
      {"porsche", std::nullopt},  // without a menu
      {"7777", std::nullopt},     // unknown
      {"something", std::nullopt},
  };
  for (const auto& [text, productID] : cases) {
    const auto found = simulatableProduct(text);
    EXPECT_EQ(found ? std::optional(found->productID) : std::nullopt, productID) << text;
  }
  EXPECT_TRUE(FanatecProduct::lookup(defaultSimulatedProduct)->hasTuningMenu());
}

}  // namespace
}  // namespace quorvane
