#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "tests/app/model_fixture.h"

namespace quorvane {
namespace {

constexpr const char* connectedDD1 = "[log] Connected to Podium Wheel Base DD1";

// A model with a named base, as with --device.
class ModelNamedBase : public ModelTest {
 protected:
  ModelNamedBase() { useRealTime(); }

  // Plugs in a base. The watcher sees it only with its serial number.
  FaultyDevice& attachNumbered(std::int64_t productID, const std::string& serialNumber) {
    backend_.hold(true);
    FaultyDevice& device = attach(productID);
    device.setProperty(HIDPropertyKey::serialNumber, serialNumber);
    backend_.hold(false);
    return device;
  }

  // The line for a named base that is not attached, while others are.
  static std::string waitingLine(const std::string& which, const std::string& attached) {
    return "No base answers to \"" + which + "\"; waiting for it. Attached: " + attached +
           ". Plug in the one you named, or connect another in the Base section.";
  }

  const std::string dd1_ = "Podium Wheel Base DD1 (QV-A)";
};

TEST_F(ModelNamedBase, IsConnectedThoughItIsNotTheFirst) {
  attachNumbered(0x0006, "QV-A");
  attachNumbered(0x0020, "QV-B");
  for (const std::string& which : {std::string("QV-B"), info(1).id}) {
    create(which);
    settle();
    EXPECT_EQ(takeLog(), (Lines{connectedLine})) << which;
    EXPECT_EQ(model().linkTo(info(0)), AppModel::Link::none);
    EXPECT_EQ(model().linkTo(info(1)), AppModel::Link::open);
    EXPECT_EQ(model().devices().size(), 2U) << "the others are listed all the same";
    end();
  }
}

TEST_F(ModelNamedBase, IsWaitedForWhileOthersAreAttached) {
  attachNumbered(0x0006, "QV-A");
  create("QV-B");
  settle();
  const std::string line = waitingLine("QV-B", dd1_);
  EXPECT_EQ(takeLog(), (Lines{"[log] " + line}));
  EXPECT_EQ(state(), "idle; no base; nothing known; nothing staged; " + line);
  EXPECT_EQ(device(0).transcript().lines(), Lines{});
  attachNumbered(0x0020, "QV-B");
  settle();
  EXPECT_EQ(takeLog(), (Lines{connectedLine}));
}

TEST_F(ModelNamedBase, IsWaitedForLikeAnyWhileNoneIsAttached) {
  startWithoutBase("QV-B");
  EXPECT_EQ(model().statusLine(), noBaseStatus);
  EXPECT_EQ(model().log().size(), 0U);
  attachNumbered(0x0020, "QV-B");
  settle();
  EXPECT_EQ(takeLog(), (Lines{connectedLine}));
}

TEST_F(ModelNamedBase, IsAnnouncedOnceForTheSameOthers) {
  attachNumbered(0x0006, "QV-A");
  create("QV-B");
  settle();
  takeLog();
  model().saveCurrentAsPreset("nothing to capture");
  model().discardStaged();
  model().devicesChanged(model().devices());
  settle();
  EXPECT_EQ(takeLog(), Lines{});
  EXPECT_EQ(model().statusLine(), waitingLine("QV-B", dd1_));
  attachNumbered(0x0001, "");
  settle();
  EXPECT_EQ(takeLog(), (Lines{"[log] " + waitingLine("QV-B", "ClubSport Wheel Base V2 (" +
                                                                 info(1).id + "); " + dd1_)}));
}

TEST_F(ModelNamedBase, IsWaitedForAgainWhenItLeaves) {
  attachNumbered(0x0006, "QV-A");
  attachNumbered(0x0020, "QV-B");
  startWithoutBase("QV-B");
  device(1).unplug();
  settle();
  EXPECT_EQ(takeLog(), (Lines{disconnectedLine, "[log] " + waitingLine("QV-B", dd1_)}));
  EXPECT_FALSE(model().isConnected());
  device(1).plug();
  settle();
  EXPECT_EQ(takeLog(), (Lines{connectedLine}));
  device(1).unplug();
  settle();
  EXPECT_EQ(takeLog(), (Lines{disconnectedLine, "[log] " + waitingLine("QV-B", dd1_)}));
  device(0).unplug();
  settle();
  EXPECT_EQ(model().statusLine(), noBaseStatus);
}

TEST_F(ModelNamedBase, GivesWayToOneThatIsConnectedByHandUntilThatLeaves) {
  attachNumbered(0x0006, "QV-A");
  create("QV-B");
  settle();
  takeLog();
  model().connect(info(0));
  settle();
  EXPECT_EQ(takeLog(), (Lines{connectedDD1}));
  attachNumbered(0x0020, "QV-B");
  settle();
  EXPECT_EQ(takeLog(), Lines{}) << "a connected base is never swapped";
  EXPECT_EQ(model().linkTo(info(0)), AppModel::Link::open);
  device(0).unplug();
  settle();
  EXPECT_EQ(takeLog(), (Lines{disconnectedLine, connectedLine}));
}

TEST_F(ModelNamedBase, OneThatCannotBeOpenedIsTriedWithTheNextList) {
  attachNumbered(0x0006, "QV-A");
  attachNumbered(0x0020, "QV-B").failOpenWith(HIDReturnCode::exclusiveAccess);
  create("QV-B");
  settle();
  ASSERT_FALSE(takeLog().empty());
  EXPECT_FALSE(model().isConnected());
  EXPECT_EQ(device(0).transcript().lines(), Lines{});
  device(1).failOpenWith(HIDReturnCode::success);
  model().devicesChanged(model().devices());
  settle();
  EXPECT_EQ(takeLog(), (Lines{connectedLine}));
}

class ModelLink : public ModelTest {};

TEST_F(ModelLink, TellsHowFarTheWayToABaseIs) {
  Gate gate;
  base();
  clock_.at(Moment::request, 0, [&] { gate.pass(); });
  create();
  gate.awaitArrival();
  EXPECT_EQ(model().linkTo(info(0)), AppModel::Link::opening);
  gate.open();
  settle();
  EXPECT_EQ(model().linkTo(info(0)), AppModel::Link::open);
  attach();
  settle();
  EXPECT_EQ(model().linkTo(info(1)), AppModel::Link::none) << "of the same kind, elsewhere";
  model().disconnect();
  EXPECT_EQ(model().linkTo(info(0)), AppModel::Link::none);
}

}  // namespace
}  // namespace quorvane
