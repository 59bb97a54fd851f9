#include <gtest/gtest.h>

#include <QCoreApplication>
#include <cerrno>
#include <functional>
#include <string>
#include <vector>

#include "tests/app/model_fixture.h"

namespace quorvane {
namespace {

using P = TuningParameter;

const TuningPreset& wet() {
  static const TuningPreset preset =
      presetOf("Wet", {{P::slot, 4}, {P::forceFeedback, 80}, {P::driftMode, 2}});
  return preset;
}

// An action that goes through the work queue to the base.
struct Action {
  std::string name;
  std::function<void(AppModel&)> run;
  std::string success;  // the log line, or none
  std::string silence;  // the log line on a time-out
};

const std::vector<Action>& actions() {
  const std::string timeout = menuTimeout;
  static const std::vector<Action> all{
      {"refresh", [](AppModel& model) { model.refresh(); }, "",
       "[error] Read the tuning menu failed: " + timeout},
      {"selectSlot", [](AppModel& model) { model.selectSlot(4); }, "[log] Switched to set 4",
       "[error] Switch set failed: " + timeout},
      {"toggleMode", [](AppModel& model) { model.toggleMode(); }, "[log] Now in advanced mode",
       "[error] Toggle mode failed: " + timeout},
      {"apply", [](AppModel& model) { model.apply(wet()); }, "[log] Applied \"Wet\" (1 values)",
       "[log] Applied \"Wet\" with 1 failures: FF: " + timeout},
      {"factoryReset", [](AppModel& model) { model.factoryReset(); },
       "[log] Tuning menu reset to factory defaults", "[error] Factory reset failed: " + timeout},
  };
  return all;
}

Lines lineOf(const std::string& text) { return text.empty() ? Lines{} : Lines{text}; }

class ModelActions : public ModelTest {
 protected:
  void run(const Action& action) {
    action.run(model());
    settle();
  }
};

class ModelUSBReset : public ModelTest {};

TEST_F(ModelActions, WithoutABaseAreAnErrorAtOnce) {
  startWithoutBase();
  for (const Action& action : actions()) {
    SCOPED_TRACE(action.name);
    action.run(model());
    EXPECT_FALSE(model().busy());
    EXPECT_EQ(takeLog(), (Lines{"[error] No base connected"}));
    EXPECT_EQ(model().statusLine(), "No base connected");
  }
}

TEST_F(ModelActions, WhileABaseIsBeingOpenedAreAnErrorAtOnce) {
  Gate gate;
  base();
  clock_.at(Moment::request, 0, [&] { gate.pass(); });
  create();
  gate.awaitArrival();
  for (const Action& action : actions()) {
    action.run(model());
    EXPECT_EQ(takeLog(), (Lines{"[error] No base connected"})) << action.name;
  }
  gate.open();
  settle();
  EXPECT_EQ(takeLog(), (Lines{connectedLine}));
}

TEST_F(ModelActions, LogWhatTheyDid) {
  for (const Action& action : actions()) {
    SCOPED_TRACE(action.name);
    start();
    action.run(model());
    EXPECT_TRUE(model().busy());
    settle();
    EXPECT_FALSE(model().busy());
    EXPECT_EQ(takeLog(), lineOf(action.success));
    end();
    simulate([](SimulatedBase& simulated) { simulated.menu().reset(); });
  }
}

TEST_F(ModelActions, OfASilentBaseLogWhatFailed) {
  for (const Action& action : actions()) {
    SCOPED_TRACE(action.name);
    start();
    behave([](SimulatedBehaviour& b) { b.silent = true; });
    run(action);
    EXPECT_EQ(takeLog(), lineOf(action.silence));
    EXPECT_TRUE(model().isConnected());
    EXPECT_TRUE(model().tuning());
    behave([](SimulatedBehaviour& b) { b.silent = false; });
    end();
  }
}

TEST_F(ModelActions, SurviveARefusedPacket) {
  start();
  behave([](SimulatedBehaviour& b) { b.failSendsWith = 0x0000C005; });
  run(actions()[1]);
  EXPECT_EQ(takeLog(), (Lines{"[error] Switch set failed: HID I/O failed: SetReport id 0xFF -> "
                              "IOReturn 0x0000C005"}));
  behave([](SimulatedBehaviour& b) { b.failSendsWith = HIDReturnCode::success; });
  run(actions()[1]);
  EXPECT_EQ(takeLog(), (Lines{"[log] Switched to set 4"}));
}

TEST_F(ModelActions, ShowTheMenuThenBecomeIdleThenLog) {
  start();
  watchStates();
  model().selectSlot(4);
  settle();
  const std::string known = "CSL DD Wheel Base; identity+menu; nothing staged; ";
  EXPECT_EQ(takeStates(), (Lines{"busy; " + known + "Connected to CSL DD Wheel Base",
                                 "idle; " + known + "Connected to CSL DD Wheel Base",
                                 "idle; " + known + "Switched to set 4"}));
  EXPECT_EQ(model().tuning()->slot(), 4);
}

TEST_F(ModelActions, LeaveWhatIsStagedAlone) {
  start();
  model().stage(P::vibration, 50);
  for (const Action& action : actions()) {
    run(action);
    EXPECT_EQ(staged(), "SHO=50") << action.name;
  }
}

TEST_F(ModelActions, OfABaseThatWasLetGoMeanwhileOnlyLog) {
  start();
  Gate gate;
  clock_.at(Moment::pause, 0, [&] { gate.pass(); });
  model().selectSlot(4);
  gate.awaitArrival();
  model().disconnect();
  gate.open();
  settle();
  EXPECT_EQ(takeLog(), (Lines{"[error] Switch set failed: Device is not open"}));
  EXPECT_EQ(state(),
            "idle; no base; nothing known; nothing staged; Switch set failed: Device is "
            "not open");
}

TEST_F(ModelActions, AreDoneInTheOrderAskedForWhileTheModelStaysBusy) {
  start();
  watchStates();
  model().selectSlot(4);
  model().toggleMode();
  model().refresh();
  settle();
  EXPECT_EQ(takeLog(), (Lines{"[log] Switched to set 4", "[log] Now in advanced mode"}));
  EXPECT_EQ(takeTranscript(), (Lines{"> ff 03 01 04 +60", "pause 150 ms", menuRequest,  //
                                     "> ff 03 06 +61", "pause 400 ms", menuRequest,     //
                                     menuRequest, identityOn, identityRequest}));
  Lines idle;
  for (const std::string& line : takeStates()) {
    if (line.starts_with("idle")) idle.push_back(line);
  }
  EXPECT_EQ(idle, (Lines{"idle; CSL DD Wheel Base; identity+menu; nothing staged; Now in advanced "
                         "mode"}));
}

TEST_F(ModelActions, ARefreshReadsMenuAndIdentity) {
  start();
  simulate([](SimulatedBase& simulated) {
    simulated.menu().put(P::forceFeedback, 42);
    simulated.attachWheel(0x12, 7);
  });
  model().refresh();
  settle();
  EXPECT_EQ(takeTranscript(), (Lines{menuRequest, identityOn, identityRequest}));
  EXPECT_EQ(takeLog(), Lines{});
  EXPECT_EQ(model().statusLine(), "Connected to CSL DD Wheel Base");
  EXPECT_EQ(valueOf(P::forceFeedback), 42);
  EXPECT_EQ(model().identity()->wheelCode(), 0x12);
}

TEST_F(ModelActions, ARefreshWhoseIdentityDoesNotComeIsSilent) {
  start();
  const auto before = model().identity();
  simulate([](SimulatedBase& simulated) {
    simulated.menu().put(P::forceFeedback, 42);
    simulated.identityReport()[1] = 0x7F;
  });
  model().refresh();
  settle();
  EXPECT_EQ(takeLog(), Lines{});
  EXPECT_EQ(valueOf(P::forceFeedback), 42);
  EXPECT_EQ(model().identity(), before);
}

TEST_F(ModelActions, ARefreshWhoseMenuDoesNotComeAsksForNoIdentity) {
  start();
  behave([](SimulatedBehaviour& b) { b.tuningSilent = true; });
  model().refresh();
  settle();
  EXPECT_EQ(takeTranscript(), (Lines{menuRequest}));
  EXPECT_EQ(takeLog(), lineOf(actions()[0].silence));
}

TEST_F(ModelActions, SwitchTheSetInPlaceAndTellTheOneThatTheBaseHas) {
  start();
  for (const auto& [slot, told] : std::vector<std::pair<int, int>>{{4, 4}, {1, 1}, {9, 1}}) {
    model().selectSlot(slot);
    settle();
    EXPECT_EQ(takeLog(), (Lines{"[log] Switched to set " + std::to_string(told)}));
    EXPECT_EQ(takeTranscript(),
              (Lines{"> ff 03 01 0" + std::to_string(slot) + " +60", "pause 150 ms", menuRequest}));
  }
}

TEST_F(ModelActions, ToggleTheModeBackAndForth) {
  start();
  for (const char* const mode : {"advanced", "standard", "advanced"}) {
    model().toggleMode();
    settle();
    EXPECT_EQ(takeLog(), (Lines{std::string("[log] Now in ") + mode + " mode"}));
    EXPECT_EQ(takeTranscript(), (Lines{"> ff 03 06 +61", "pause 400 ms", menuRequest}));
    EXPECT_EQ(model().tuning()->modeName(), mode);
  }
}

TEST_F(ModelActions, ResetTheMenu) {
  start();
  model().factoryReset();
  settle();
  EXPECT_EQ(takeLog(), (Lines{"[log] Tuning menu reset to factory defaults"}));
  EXPECT_EQ(takeTranscript(), (Lines{"> ff 03 04 +61", "pause 400 ms", menuRequest}));
  EXPECT_EQ(model().tuning()->slot(), 1);
  EXPECT_EQ(valueOf(P::forceFeedback), 100);
}

TEST_F(ModelActions, ApplyAPresetValueByValue) {
  start();
  model().apply(presetOf("Wet", {{P::naturalInertia, 9},
                                 {P::slot, 5},
                                 {P::driftMode, 2},
                                 {P::sensitivity, 800},
                                 {P::forceFeedback, 65}}));
  settle();
  EXPECT_EQ(takeLog(), (Lines{"[log] Applied \"Wet\" (3 values)"}));
  EXPECT_EQ(takeTranscript(), (Lines{writeOf("d1", "41", "05"), commitPause, menuRequest,  //
                                     writeOf("d1", "41", "05"), commitPause, menuRequest,  //
                                     writeOf("d1", "41", "09"), commitPause, menuRequest}));
  EXPECT_EQ(valueOf(P::sensitivity), 800);
}

TEST_F(ModelActions, ApplyAPresetOfWhichTwoValuesFail) {
  start();
  behave([](SimulatedBehaviour& b) { b.ignored = {P::forceFeedback}; });
  model().apply(
      presetOf("Wet", {{P::sensitivity, 80}, {P::forceFeedback, 80}, {P::naturalInertia, 9}}));
  settle();
  EXPECT_EQ(takeLog(),
            (Lines{"[log] Applied \"Wet\" with 2 failures: SEN: SEN value 80 is outside 90...2520; "
                   "FF: The base ignored the FF write; it still reports 65"}));
  EXPECT_EQ(takeTranscript(), (Lines{writeOf("db", "50", "05"), commitPause, menuRequest,  //
                                     writeOf("db", "41", "09"), commitPause, menuRequest}));
  EXPECT_EQ(valueOf(P::naturalInertia), 9);
}

TEST_F(ModelActions, ApplyAPresetThatHasNothingForTheBase) {
  start();
  model().apply(presetOf("Drift", {{P::driftMode, 2}, {P::slot, 1}}));
  settle();
  EXPECT_EQ(takeLog(), (Lines{"[log] Applied \"Drift\" (0 values)"}));
  EXPECT_EQ(takeTranscript(), Lines{});
}

TEST_F(ModelUSBReset, TheBaseLeavesAndIsConnectedAgain) {
  start();
  model().stage(P::forceFeedback, 80);
  resetUSBAndReconnect();
  settle();
  EXPECT_EQ(takeLog(), (Lines{disconnectedLine,
                              "[log] USB reset issued; the base will reconnect in a few seconds",
                              connectedLine}));
  EXPECT_EQ(staged(), "");
  EXPECT_EQ(takeTranscript(), (Lines{"close", "open", identityOn, identityRequest, menuRequest}));
}

TEST_F(ModelUSBReset, NeedsNoSession) {
  base().failOpenWith(HIDReturnCode::exclusiveAccess);
  start();
  backend_.hold(true);
  model().usbReset();
  waitUntil([this] {
    return model().statusLine() == "USB reset issued; the base will reconnect in a few seconds";
  });
  EXPECT_EQ(takeLog(), (Lines{"[log] USB reset issued; the base will reconnect in a few seconds"}));
  base().failOpenWith(HIDReturnCode::success);
  backend_.hold(false);
  settle();
  EXPECT_EQ(takeLog(), (Lines{connectedLine}));
}

TEST_F(ModelUSBReset, WithoutADeviceOnTheBusFails) {
  startWithoutBase();
  model().usbReset();
  waitUntil([this] { return !model().log().empty(); });
  EXPECT_EQ(takeLog(), (Lines{"[error] USB reset failed: HID I/O failed: no USB device with vendor "
                              "0xeb7 found"}));
}

TEST_F(ModelUSBReset, TellsWhyTheSystemRefused) {
  start();
  usb_.refuseWith(EACCES);
  model().usbReset();
  waitUntil([this] { return model().log().size() == 2; });
  EXPECT_EQ(takeLog(),
            (Lines{"[error] USB reset failed: /dev/bus/usb/001/002: Permission denied"}));
  EXPECT_TRUE(model().isConnected());
}

}  // namespace
}  // namespace quorvane
