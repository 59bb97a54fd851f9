#include <gtest/gtest.h>

#include <QCoreApplication>
#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tests/app/model_fixture.h"

namespace quorvane {
namespace {

using P = TuningParameter;

// The transcript of connecting to a base.
const Lines opening{"open", identityOn, identityRequest, menuRequest};

// A device that is unplugged and plugged in again while it is being opened.
class LooseDevice final : public HIDDeviceHandle {
 public:
  explicit LooseDevice(SimulatedDevice& device) : device_(device) {}

  std::optional<HIDProperty> property(std::string_view key) const override {
    return device_.property(key);
  }
  std::vector<HIDElement> elements() const override { return device_.elements(); }
  std::string node() const override { return device_.node(); }
  bool accessible() const override { return device_.accessible(); }
  HIDOpenResult open(bool exclusive) override {
    HIDOpenResult opened = device_.open(exclusive);
    device_.unplug();
    device_.plug();
    return opened;
  }

 private:
  SimulatedDevice& device_;
};

class ModelStart : public ModelTest {};
class ModelFilter : public ModelTest {};
class ModelOpening : public ModelTest {};
class ModelPlugging : public ModelTest {};
class ModelDisconnect : public ModelTest {};
class ModelReports : public ModelTest {};

class ModelDemo : public ModelTest {
 protected:
  void askFor(const std::string& edits) { demo_.emplace("QUORVANE_DEMO_STAGE", edits); }

 private:
  std::optional<ScopedVariable> demo_;
};

class ModelWithSeveralBases : public ModelTest {
 protected:
  ModelWithSeveralBases() { useRealTime(); }

  // The id of the base that the model is connected to.
  std::string connectedID() {
    for (const HIDDeviceInfo& device : model().devices()) {
      for (std::size_t number = 0; number < 2; ++number) {
        if (info(number).id == device.id && this->device(number).openPorts() > 0) return device.id;
      }
    }
    return "";
  }
};

TEST_F(ModelStart, BeginsWithNothingButThePresets) {
  base();
  store_->save({presetOf("Wet", {{P::forceFeedback, 80}})});
  bool looked = false;
  backend_.setOnMonitor([&](auto) {
    const AppModel& model = *AppModel::shared();
    looked = true;
    EXPECT_EQ(model.statusLine(), "Looking for a Fanatec base\u2026");
    EXPECT_EQ(model.devices().size(), 0U);
    EXPECT_EQ(model.log().size(), 0U);
    EXPECT_EQ(model.staged().size(), 0U);
    EXPECT_EQ(model.userPresets().size(), 1U);
    EXPECT_FALSE(model.busy());
    EXPECT_FALSE(model.isConnected());
    EXPECT_FALSE(model.product());
    EXPECT_FALSE(model.connectedName());
    EXPECT_FALSE(model.identity());
    EXPECT_FALSE(model.tuning());
    EXPECT_FALSE(model.wheelID());
    EXPECT_FALSE(model.firmwareVersion());
    EXPECT_FALSE(model.requestedSection());
  });
  create();
  EXPECT_TRUE(looked);
}

TEST_F(ModelStart, LoadsThePresetsThenWatchesThenLooksForTheVendorsDevices) {
  store_->save({presetOf("Wet", {})});
  Lines steps;
  backend_.setOnMonitor([&](auto vendorID) {
    EXPECT_EQ(vendorID, Fanatec::vendorID);
    steps.emplace_back("watches");
    std::filesystem::remove(store_->fileURL());
  });
  backend_.setOnList([&](auto vendorID) {
    EXPECT_EQ(vendorID, Fanatec::vendorID);
    steps.emplace_back("looks");
  });
  create();
  EXPECT_EQ(steps, (Lines{"watches", "looks"}));
  ASSERT_EQ(model().userPresets().size(), 1U);
  EXPECT_EQ(model().userPresets()[0].name, "Wet");
}

TEST_F(ModelStart, IsOnItsWayToTheBaseWhenTheConstructorReturns) {
  base();
  create();
  EXPECT_EQ(model().devices().size(), 1U);
  EXPECT_TRUE(model().busy());
  EXPECT_EQ(model().statusLine(), connectingStatus);
  EXPECT_FALSE(model().isConnected());
  EXPECT_EQ(takeLog(), Lines{});
}

TEST_F(ModelStart, ConnectsToTheBaseAndReadsIdentityAndMenu) {
  base();
  create();
  settle();
  EXPECT_TRUE(model().isConnected());
  EXPECT_EQ(model().product(), FanatecProduct::lookup(defaultSimulatedProduct));
  EXPECT_EQ(state(),
            "idle; CSL DD Wheel Base; identity+menu; nothing staged; Connected to CSL DD Wheel "
            "Base");
  EXPECT_EQ(valueOf(P::forceFeedback), 65);
  EXPECT_EQ(takeLog(), (Lines{connectedLine}));
  EXPECT_EQ(takeTranscript(), opening);
}

TEST_F(ModelStart, TellsOfItsChangesOnceTheEventLoopRuns) {
  base();
  create();
  EXPECT_EQ(changes_, 0);
  settle();
  EXPECT_GT(changes_, 0);
}

TEST_F(ModelStart, KnowsEverythingOfTheBaseBeforeItIsIdleAndLogsLast) {
  base();
  backend_.setCanWatch(false);
  create();
  watchStates();
  settle();
  const std::string connecting = connectingStatus;
  EXPECT_EQ(takeStates(),
            (Lines{"busy; no base; menu; nothing staged; " + connecting,
                   "idle; CSL DD Wheel Base; identity+menu; nothing staged; " + connecting,
                   "idle; CSL DD Wheel Base; identity+menu; nothing staged; Connected to CSL DD "
                   "Wheel Base"}));
}

TEST_F(ModelStart, WithoutABaseSaysWhatToDo) {
  startWithoutBase();
  EXPECT_EQ(state(), std::string("idle; no base; nothing known; nothing staged; ") + noBaseStatus);
  EXPECT_EQ(takeLog(), Lines{});
}

TEST_F(ModelStart, ConnectsToABaseThatIsPluggedInLater) {
  startWithoutBase();
  base();
  settle();
  EXPECT_EQ(takeLog(), (Lines{connectedLine}));
}

TEST_F(ModelStart, ConnectsOnAMachineThatCannotWatch) {
  backend_.setCanWatch(false);
  base();
  create();
  settle();
  EXPECT_EQ(takeLog(), (Lines{connectedLine}));
}

TEST_F(ModelStart, ItIsTheSharedOneUntilAnotherIsMade) {
  EXPECT_EQ(AppModel::shared(), nullptr);
  startWithoutBase();
  EXPECT_EQ(AppModel::shared(), &model());
  {
    const AppModel second({{backend_, usb_, clock_}, panels_, *store_});
    EXPECT_EQ(AppModel::shared(), &second);
  }
  EXPECT_EQ(AppModel::shared(), nullptr);
}

TEST_F(ModelFilter, KeepsBasesOfTheCatalogueAndJoysticks) {
  struct Device {
    std::int64_t productID;
    std::int64_t usage;
    bool isKept;
  };
  const std::vector<Device> table{
      {0x0001, 4, true},   // a base with the usage joystick
      {0x0020, 5, true},   // a base with another usage
      {0x0011, 0, true},   // a base without a tuning menu
      {0x6204, 5, false},  // pedals
      {0x6205, 4, true},   // pedals with the usage joystick
      {0xABCD, 4, true},   // unknown
      {0xABCE, 5, false}, {0xABCF, 1, false},
  };
  std::vector<std::int64_t> kept;
  for (const auto& [productID, usage, isKept] : table) {
    SimulatedDevice& device = attach();
    device.setProperty(HIDPropertyKey::productID, productID);
    device.setProperty(HIDPropertyKey::primaryUsage, usage);
    if (isKept) kept.push_back(productID);
  }
  std::sort(kept.begin(), kept.end());
  create();
  std::vector<std::int64_t> found;
  for (const HIDDeviceInfo& device : model().devices()) found.push_back(device.productID);
  EXPECT_EQ(found, kept);
}

TEST_F(ModelFilter, KeepsTheOrderOfTheList) {
  attach();
  attach();
  start();
  model().devicesChanged({info(1), info(0)});
  ASSERT_EQ(model().devices().size(), 2U);
  EXPECT_EQ(model().devices()[0].id, info(1).id);
  EXPECT_EQ(model().devices()[1].id, info(0).id);
}

TEST_F(ModelFilter, PedalsAloneAreNoBase) {
  base().setProperty(HIDPropertyKey::productID, std::int64_t{0x6204});
  base().setProperty(HIDPropertyKey::primaryUsage, std::int64_t{5});
  create();
  settle();
  EXPECT_EQ(model().devices().size(), 0U);
  EXPECT_EQ(model().statusLine(), noBaseStatus);
  EXPECT_EQ(takeTranscript(), Lines{});
}

TEST_F(ModelFilter, AnUnknownJoystickIsConnectedTo) {
  base().setProperty(HIDPropertyKey::productID, std::int64_t{0xABCD});
  base().setProperty(HIDPropertyKey::product, std::string("Base of Tomorrow"));
  create();
  EXPECT_EQ(model().statusLine(), "Connecting to Base of Tomorrow\u2026");
  settle();
  EXPECT_EQ(takeLog(), (Lines{connectedLine}));
  EXPECT_TRUE(model().isConnected());
  EXPECT_FALSE(model().product());
}

TEST_F(ModelOpening, ABaseThatCannotBeOpenedIsAnError) {
  struct Failure {
    HIDReturn code;
    std::string reason;
  };
  const std::vector<Failure> failures{
      {HIDReturnCode::exclusiveAccess, "exclusive access: another app has seized the device"},
      {HIDReturnCode::notPermitted,
       "not permitted: check System Settings > Privacy & Security > Input Monitoring"},
      {HIDReturnCode::noDevice, "device not found"},
      {0x0000C005, "IOReturn 0x0000C005"},
  };
  backend_.setCanWatch(false);
  for (const auto& [code, reason] : failures) {
    base().failOpenWith(code);
    create();
    watchStates();
    settle();
    const std::string text =
        "Could not open CSL DD / GT DD Pro / ClubSport DD: HID I/O failed: " + reason;
    EXPECT_EQ(takeLog(), (Lines{"[error] " + text}));
    const std::string idle = "idle; no base; nothing known; nothing staged; ";
    EXPECT_EQ(takeStates(), (Lines{idle + connectingStatus, idle + text}));
    EXPECT_FALSE(model().isConnected());
    EXPECT_EQ(takeTranscript(), Lines{});
    end();
  }
}

TEST_F(ModelOpening, IsTriedAgainWithTheNextDeviceListOnly) {
  base().failOpenWith(HIDReturnCode::exclusiveAccess);
  start();
  base().failOpenWith(HIDReturnCode::success);
  settle();
  EXPECT_FALSE(model().isConnected());
  model().devicesChanged(model().devices());
  settle();
  EXPECT_TRUE(model().isConnected());
}

TEST_F(ModelOpening, IsTriedAgainWhenTheSystemGrantsTheDevice) {
  base().failOpenWith(HIDReturnCode::notPermitted);
  start();
  EXPECT_FALSE(model().isConnected());
  base().failOpenWith(HIDReturnCode::success);
  backend_.reportChange();
  settle();
  EXPECT_TRUE(model().isConnected());
}

TEST_F(ModelOpening, ABaseThatAnswersNothingIsConnectedUnderItsDisplayName) {
  behave([](SimulatedBehaviour& b) { b.silent = true; });
  create();
  settle();
  EXPECT_EQ(takeLog(),
            (Lines{"[log] Connected to CSL DD / GT DD Pro / ClubSport DD", noAnswerLine}));
  EXPECT_EQ(state(),
            std::string("idle; ") + displayName +
                "; nothing known; nothing staged; The base did not answer the tuning read. Is it "
                "in PC mode?");
  EXPECT_TRUE(model().isConnected());
  EXPECT_EQ(takeTranscript(), opening);
}

TEST_F(ModelOpening, ABaseThatTellsItsIdentityOnlyIsConnectedUnderItsName) {
  behave([](SimulatedBehaviour& b) { b.tuningSilent = true; });
  create();
  settle();
  EXPECT_EQ(takeLog(), (Lines{connectedLine, noAnswerLine}));
  EXPECT_TRUE(model().identity());
  EXPECT_FALSE(model().tuning());
}

TEST_F(ModelOpening, AnIdentityThatDoesNotComeIsSilent) {
  simulate([](SimulatedBase& simulated) { simulated.identityReport()[1] = 0x7F; });
  create();
  settle();
  EXPECT_EQ(takeLog(), (Lines{"[log] Connected to CSL DD / GT DD Pro / ClubSport DD"}));
  EXPECT_EQ(model().connectedName(), displayName);
  EXPECT_FALSE(model().identity());
  EXPECT_TRUE(model().tuning());
}

TEST_F(ModelOpening, ABaseThatRefusesEveryPacketIsConnectedAllTheSame) {
  behave([](SimulatedBehaviour& b) { b.failSendsWith = 0x0000C005; });
  create();
  settle();
  EXPECT_EQ(takeLog(),
            (Lines{"[log] Connected to CSL DD / GT DD Pro / ClubSport DD", noAnswerLine}));
}

TEST_F(ModelOpening, AnotherDeviceListStartsNoSecondOne) {
  Gate gate;
  base();
  clock_.at(Moment::request, 0, [&] { gate.pass(); });
  create();
  gate.awaitArrival();
  const auto devices = model().devices();
  model().devicesChanged(devices);
  attach();
  backend_.waitUntilQuiet();
  QCoreApplication::sendPostedEvents();
  EXPECT_EQ(model().devices().size(), 2U);
  EXPECT_TRUE(model().busy());
  EXPECT_EQ(model().statusLine(), connectingStatus);
  gate.open();
  settle();
  EXPECT_EQ(takeLog(), (Lines{connectedLine}));
  EXPECT_EQ(takeTranscript(), opening);
  EXPECT_EQ(device(1).transcript().lines(), Lines{});
}

TEST_F(ModelOpening, ABaseThatLeavesMeanwhileIsLetGoSilently) {
  Gate gate;
  base();
  clock_.at(Moment::request, 0, [&] { gate.pass(); });
  create();
  gate.awaitArrival();
  base().unplug();
  waitUntil([this] { return model().statusLine() == noBaseStatus; });
  EXPECT_TRUE(model().busy());
  gate.open();
  settle();
  EXPECT_EQ(takeLog(), Lines{});
  EXPECT_EQ(state(), std::string("idle; no base; nothing known; nothing staged; ") + noBaseStatus);
}

TEST_F(ModelOpening, WhatABaseToldBeforeItLeftIsForgotten) {
  Gate gate;
  base();
  simulate([](SimulatedBase& simulated) {
    simulated.behaviour().foreignReports = true;  // they include a wheel-status report
  });
  clock_.at(Moment::answer, 1, [&] { gate.pass(); });
  create();
  gate.awaitArrival();
  QCoreApplication::sendPostedEvents();
  EXPECT_EQ(state(),
            std::string("busy; no base; menu+wheel+firmware; nothing staged; ") + connectingStatus);
  base().unplug();
  waitUntil([this] { return model().statusLine() == noBaseStatus; });
  gate.open();
  settle();
  EXPECT_EQ(takeLog(), Lines{});
  EXPECT_EQ(state(), std::string("idle; no base; nothing known; nothing staged; ") + noBaseStatus);
}

TEST_F(ModelOpening, ABaseThatIsBackBeforeTheListTellsIsOpenedAgain) {
  Gate gate;
  base();
  backend_.hold(true);
  clock_.at(Moment::answer, 1, [&] { gate.pass(); });
  create();
  gate.awaitArrival();
  QCoreApplication::sendPostedEvents();
  EXPECT_TRUE(model().tuning());
  base().unplug();
  base().plug();
  waitUntil([this] { return !model().tuning() && model().statusLine() == connectingStatus; });
  gate.open();
  settle();
  EXPECT_EQ(takeLog(), (Lines{connectedLine}));
  EXPECT_TRUE(model().isConnected());
  EXPECT_EQ(takeTranscript(), (Lines{"open", identityOn, identityRequest, menuRequest, "close",
                                     "open", identityOn, identityRequest, menuRequest}));
}

TEST_F(ModelOpening, ABaseThatIsLostAsSoonAsItIsOpenIsOpenedAgain) {
  startWithoutBase();
  backend_.hold(true);
  base();
  model().devicesChanged({HIDEnumerator::info(std::make_shared<LooseDevice>(base()))});
  waitUntil([this] { return model().tuning().has_value(); });
  settle();
  EXPECT_EQ(takeLog().back(), connectedLine);
}

TEST_F(ModelOpening, ADisconnectMeanwhileIsSilent) {
  Gate gate;
  base();
  backend_.setCanWatch(false);
  clock_.at(Moment::request, 1, [&] { gate.pass(); });
  create();
  gate.awaitArrival();
  model().disconnect();
  EXPECT_TRUE(model().busy());
  gate.open();
  settle();
  EXPECT_EQ(takeLog(), Lines{});
  EXPECT_EQ(state(), "idle; no base; nothing known; nothing staged; No base connected");
  base().transcript().waitForLines(5);
  EXPECT_EQ(takeTranscript(), (Lines{"open", identityOn, identityRequest, menuRequest, "close"}));
}

TEST_F(ModelOpening, AFailureAfterADisconnectIsSilent) {
  base().failOpenWith(HIDReturnCode::exclusiveAccess);
  backend_.setCanWatch(false);
  create();
  model().disconnect();
  settle();
  EXPECT_EQ(takeLog(), Lines{});
  EXPECT_EQ(state(), "idle; no base; nothing known; nothing staged; No base connected");
}

TEST_F(ModelPlugging, WhenTheLastBaseLeavesItsTracesGo) {
  start();
  model().stage(P::forceFeedback, 80);
  watchStates();
  base().unplug();
  settle();
  EXPECT_EQ(takeLog(), (Lines{disconnectedLine}));
  EXPECT_EQ(takeStates("Base disconnected"),
            (Lines{"idle; CSL DD Wheel Base; identity+menu; FF=80; Base disconnected",
                   "idle; no base; nothing known; nothing staged; No base connected",
                   std::string("idle; no base; nothing known; nothing staged; ") + noBaseStatus}));
  EXPECT_FALSE(model().isConnected());
  EXPECT_FALSE(model().product());
  EXPECT_EQ(model().devices().size(), 0U);
}

TEST_F(ModelPlugging, ABaseThatComesBackIsConnectedAgain) {
  start();
  base().unplug();
  settle();
  base().plug();
  settle();
  EXPECT_EQ(takeLog(), (Lines{disconnectedLine, connectedLine}));
  EXPECT_EQ(takeTranscript(), (Lines{"close", "open", identityOn, identityRequest, menuRequest}));
}

TEST_F(ModelPlugging, AQuickReplugIsNoticedByTheReaderThoughTheListLooksTheSame) {
  start();
  model().stage(P::forceFeedback, 80);
  backend_.hold(true);
  base().unplug();
  base().plug();
  waitUntil([this] { return model().log().size() == 3; });
  EXPECT_EQ(takeLog(), (Lines{disconnectedLine, connectedLine}));
  backend_.hold(false);
  settle();
  EXPECT_EQ(takeLog(), Lines{});
  EXPECT_EQ(staged(), "");
  EXPECT_TRUE(model().isConnected());
  EXPECT_EQ(takeTranscript(), (Lines{"close", "open", identityOn, identityRequest, menuRequest}));
}

TEST_F(ModelPlugging, DeviceListsWhileConnectedCostNoExchange) {
  start();
  attach();
  settle();
  device(1).unplug();
  settle();
  model().devicesChanged(model().devices());
  settle();
  EXPECT_EQ(takeTranscript(), Lines{});
  EXPECT_EQ(device(1).transcript().lines(), Lines{});
  EXPECT_EQ(takeLog(), Lines{});
  EXPECT_EQ(model().statusLine(), "Connected to CSL DD Wheel Base");
}

TEST_F(ModelWithSeveralBases, TheFirstInTheListIsConnectedAndAThirdChangesNothing) {
  attach(0x0020);
  attach(0x0006);
  create();
  settle();
  EXPECT_EQ(model().devices()[0].id, info(1).id);
  EXPECT_EQ(connectedID(), info(1).id);
  EXPECT_EQ(takeLog(), (Lines{"[log] Connected to Podium Wheel Base DD1"}));
  device(1).transcript().clear();

  attach(0x0001);
  settle();
  EXPECT_EQ(model().devices().size(), 3U);
  EXPECT_EQ(model().devices()[0].id, info(2).id);
  EXPECT_EQ(connectedID(), info(1).id);
  EXPECT_EQ(takeLog(), Lines{});
  EXPECT_EQ(model().statusLine(), "Connected to Podium Wheel Base DD1");
  for (std::size_t number = 0; number < 3; ++number) {
    EXPECT_EQ(device(number).transcript().lines(), Lines{}) << number;
  }
}

TEST_F(ModelWithSeveralBases, WhenTheConnectedBaseLeavesTheNextIsConnectedAtOnce) {
  attach(0x0006);
  attach(0x0020);
  start();
  model().stage(P::forceFeedback, 80);
  watchStates();
  device(0).unplug();
  settle();
  EXPECT_EQ(takeLog(), (Lines{disconnectedLine, connectedLine}));
  const Lines states = takeStates("Base disconnected");
  ASSERT_GE(states.size(), 4U);
  EXPECT_EQ(
      Lines(states.begin() + 1, states.begin() + 4),
      (Lines{"idle; no base; nothing known; nothing staged; No base connected",
             "busy; no base; nothing known; nothing staged; No base connected",
             std::string("busy; no base; nothing known; nothing staged; ") + connectingStatus}));
  EXPECT_EQ(device(1).transcript().lines(), opening);
  EXPECT_EQ(model().product(), FanatecProduct::lookup(0x0020));
}

TEST_F(ModelWithSeveralBases, WhenAnotherBaseLeavesNothingHappens) {
  attach(0x0006);
  attach(0x0020);
  start();
  device(1).unplug();
  settle();
  EXPECT_EQ(takeLog(), Lines{});
  EXPECT_EQ(takeTranscript(), Lines{});
  EXPECT_EQ(connectedID(), info(0).id);
  EXPECT_EQ(model().devices().size(), 1U);
}

TEST_F(ModelWithSeveralBases, TwoOfAKindAreToldApartByTheirPlace) {
  attach();
  attach();
  start();
  EXPECT_EQ(connectedID(), info(0).id);
  device(0).unplug();
  settle();
  EXPECT_EQ(connectedID(), info(1).id);
  device(0).plug();
  settle();
  EXPECT_EQ(connectedID(), info(1).id);
  EXPECT_EQ(takeLog(), (Lines{disconnectedLine, connectedLine}));
}

TEST_F(ModelWithSeveralBases, AnotherOneIsConnectedByHand) {
  attach(0x0006);
  attach(0x0020);
  start();
  model().stage(P::forceFeedback, 80);
  watchStates();
  model().connect(model().devices()[1]);
  EXPECT_EQ(takeStates(), (Lines{"idle; no base; nothing known; nothing staged; No base connected",
                                 "busy; no base; nothing known; nothing staged; No base connected",
                                 std::string("busy; no base; nothing known; nothing staged; ") +
                                     connectingStatus}));
  settle();
  EXPECT_EQ(takeLog(), (Lines{connectedLine}));
  EXPECT_EQ(connectedID(), info(1).id);
  EXPECT_EQ(device(0).transcript().lines(), (Lines{"close"}));
  EXPECT_EQ(device(1).transcript().lines(), opening);
}

TEST_F(ModelWithSeveralBases, AnotherOneIsConnectedByHandWhileTheFirstIsBeingOpened) {
  Gate gate;
  attach(0x0006);
  attach(0x0020);
  clock_.at(Moment::request, 0, [&] { gate.pass(); });
  create();
  gate.awaitArrival();
  model().connect(model().devices()[1]);
  gate.open();
  settle();
  EXPECT_EQ(takeLog(), (Lines{connectedLine}));
  EXPECT_EQ(connectedID(), info(1).id);
  EXPECT_EQ(device(0).openPorts(), 0U);
  EXPECT_EQ(device(1).transcript().lines(), opening);
}

TEST_F(ModelWithSeveralBases, OneThatIsConnectedByHandAndCannotBeOpenedLeavesNone) {
  attach(0x0006);
  attach(0x0020);
  start();
  device(1).failOpenWith(HIDReturnCode::exclusiveAccess);
  model().connect(model().devices()[1]);
  settle();
  EXPECT_EQ(takeLog(),
            (Lines{"[error] Could not open CSL DD / GT DD Pro / ClubSport DD: HID I/O failed: "
                   "exclusive access: another app has seized the device"}));
  EXPECT_FALSE(model().isConnected());
  EXPECT_EQ(device(0).openPorts(), 0U);
}

TEST_F(ModelDisconnect, ConnectedByHandAgainTheSameBaseIsOpenedAnew) {
  start();
  model().connect(info(0));
  settle();
  EXPECT_EQ(takeLog(), (Lines{connectedLine}));
  EXPECT_EQ(takeTranscript(), (Lines{"close", "open", identityOn, identityRequest, menuRequest}));
}

TEST_F(ModelDisconnect, ClearsEverythingOfTheBaseAndLogsNothing) {
  start();
  simulate(
      [](SimulatedBase& simulated) { simulated.sendReport(simulated.wheelStatusReport(), {}); });
  settle();
  model().stage(P::forceFeedback, 80);
  EXPECT_EQ(state(),
            "idle; CSL DD Wheel Base; identity+menu+wheel+firmware; FF=80; Connected to "
            "CSL DD Wheel Base");
  model().disconnect();
  EXPECT_EQ(state(), "idle; no base; nothing known; nothing staged; No base connected");
  EXPECT_FALSE(model().isConnected());
  EXPECT_FALSE(model().product());
  EXPECT_EQ(takeLog(), Lines{});
  base().transcript().waitForLines(1);
  EXPECT_EQ(takeTranscript(), (Lines{"close"}));
}

TEST_F(ModelDisconnect, HoldsUntilTheNextDeviceList) {
  start();
  model().disconnect();
  settle();
  EXPECT_EQ(model().statusLine(), "No base connected");
  model().devicesChanged(model().devices());
  settle();
  EXPECT_EQ(takeLog(), (Lines{connectedLine}));
}

TEST_F(ModelDisconnect, WithoutABaseDoesNoHarm) {
  startWithoutBase();
  model().disconnect();
  EXPECT_EQ(model().statusLine(), "No base connected");
  EXPECT_EQ(takeLog(), Lines{});
}

TEST_F(ModelDisconnect, TellsOfTheEditsThatItDropsWhateverTheStatusIs) {
  startWithoutBase();
  model().disconnect();
  model().stage(P::forceFeedback, 80);
  watchStates();
  model().disconnect();
  EXPECT_EQ(takeStates(),
            (Lines{"idle; no base; nothing known; nothing staged; No base connected"}));
}

TEST_F(ModelReports, AValueTurnedAtTheWheelReachesTheMenu) {
  start();
  base().turn(P::forceFeedback, 42);
  settle();
  EXPECT_EQ(valueOf(P::forceFeedback), 42);
  EXPECT_EQ(takeLog(), Lines{});
  EXPECT_EQ(takeTranscript(), Lines{});
}

TEST_F(ModelReports, TheWheelAndItsFirmwareFollowTheStatusReports) {
  start();
  EXPECT_FALSE(model().wheelID());
  EXPECT_FALSE(model().firmwareVersion());
  struct Wheel {
    std::uint16_t id;
    std::uint16_t firmware;
  };
  for (const auto& [id, firmware] : std::vector<Wheel>{{3, 300}, {4, 300}, {4, 301}, {1, 0}}) {
    simulate([&, wheel = id, version = firmware](SimulatedBase& simulated) {
      simulated.attachWheel(wheel, version);
      simulated.sendReport(simulated.wheelStatusReport(), {});
    });
    settle();
    EXPECT_EQ(model().wheelID(), id);
    EXPECT_EQ(model().firmwareVersion(), firmware);
  }
}

TEST_F(ModelReports, ThoseThatTellNothingNewChangeNothing) {
  start();
  const auto report = [this] {
    simulate([](SimulatedBase& simulated) {
      simulated.sendReport(simulated.wheelStatusReport(), {});
      simulated.sendReport(Bytes{0xFF, 0x7F}, {});
      simulated.sendReport(Bytes(63, 0xFF), {});
    });
    settle();
  };
  report();
  changes_ = 0;
  for (int i = 0; i < 100; ++i) report();
  EXPECT_EQ(changes_, 0);
}

TEST_F(ModelReports, ThoseOfABaseThatWasLetGoChangeNothing) {
  start();
  simulate([](SimulatedBase& simulated) {
    simulated.turn(P::forceFeedback, 42, {});
    simulated.sendReport(simulated.wheelStatusReport(), {});
  });
  base().waitUntilQuiet();
  model().disconnect();
  changes_ = 0;
  settle();
  EXPECT_EQ(state(), "idle; no base; nothing known; nothing staged; No base connected");
  EXPECT_EQ(changes_, 0);
}

TEST_F(ModelDemo, StagesTheEditsOfTheEnvironmentOnceConnected) {
  askFor("SEN=800,FF=80");
  base();
  create();
  settle();
  EXPECT_EQ(staged(), "SEN=800 FF=80");
  EXPECT_EQ(takeLog(), (Lines{connectedLine}));
  EXPECT_EQ(takeTranscript(), opening);
}

TEST_F(ModelDemo, SkipsWhatIsNoEdit) {
  askFor(",SEN=900,XYZ=5,FF=high");
  simulate([](SimulatedBase& simulated) { simulated.menu().put(P::sensitivity, 540); });
  start();
  EXPECT_EQ(staged(), "SEN=900");
}

TEST_F(ModelDemo, StagesAsIfTheUserHad) {
  askFor("SEN=900,FF=80,NIN=9,NIN=5");
  start();
  EXPECT_EQ(staged(), "FF=80");
}

TEST_F(ModelDemo, IsRepeatedForEveryConnection) {
  askFor("FF=80");
  start();
  base().unplug();
  settle();
  EXPECT_EQ(staged(), "");
  base().plug();
  settle();
  EXPECT_EQ(staged(), "FF=80");
}

}  // namespace
}  // namespace quorvane
