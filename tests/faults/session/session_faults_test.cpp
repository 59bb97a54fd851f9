#include <gtest/gtest.h>

#include <set>
#include <string>

#include "tests/faults/company.h"
#include "tests/faults/fault.h"
#include "tests/faults/fault_table.h"
#include "tests/faults/leftovers.h"
#include "tests/faults/packets.h"
#include "tests/faults/public_members.h"
#include "tests/faults/session/operation.h"
#include "tests/support/file_calls.h"

namespace quorvane {
namespace {

constexpr const char* tableName = "session";
constexpr std::int64_t otherProduct = 0x0006;

// How many packets the base has received before the operation: the request for the menu. Operations
// that open the node start with a closed session.
constexpr int receivedBefore = 1;

// One operation with one fault. No thread or descriptor may be left behind.
class Cell {
 public:
  explicit Cell(const Operation& operation) : operation_(operation) {
    if (!operation.opensNode) session_.connectAndRead(operation.use);
  }

  SimulatedSession& session() { return session_; }
  Scene scene() { return {*session_.device, session_.clock, session_.base->tuning().value()}; }

  // Runs the operation and compares its outcome with the prediction.
  void expect(const std::string& fault, std::size_t n, const Prediction& prediction,
              const std::string& words, std::size_t packetsOfOther = 0) {
    SCOPED_TRACE(operation_.name + ", " + fault + ", " + std::to_string(n));
    session_.takeTranscript();
    const auto begin = session_.clock.now();
    const std::string said = operation_.run(*session_.base);
    const Seconds time = session_.clock.now() - begin;
    EXPECT_EQ(said, words);
    EXPECT_NEAR(time.count(), prediction.time.count(), 1e-6);
    const std::size_t packets = packetsTaken(session_.takeTranscript()) - packetsOfOther;
    EXPECT_EQ(packets, prediction.packets);
    FaultTable::add({tableName, operation_.name, fault, n, {said}, time, std::to_string(packets)});
  }

  // Ends the fault and lets late answers arrive. Then the session must be able to read the menu,
  // and keep it.
  void expectRecovery() {
    session_.behave([](SimulatedBehaviour& behaviour) { behaviour = {}; });
    session_.clock.sleepFor(Seconds(10));
    session_.device->waitUntilQuiet();
    if (!session_.base->connection().isOpen()) return;
    session_.base->fetchTuning(WheelBase::readTimeout);
    EXPECT_EQ(session_.keptMenu(), session_.menuReport());
  }

 private:
  const Operation& operation_;
  const NoLeftovers noLeftovers_;
  SimulatedSession session_;
};

Disturbance sessionDisturbance() {
  Disturbance disturbance;
  disturbance.whenGone = [](const Step& step) {
    return step.isPacket() ? refusalText(step, "device not found") : timeoutText(step);
  };
  disturbance.goneWait = WheelBase::readTimeout;
  return disturbance;
}

std::string wordsFor(const Operation& operation, const Disturbance& disturbance) {
  if (disturbance.tellsOldMenus && !operation.oldMenu.empty()) return operation.oldMenu;
  return operation.words(predict(operation.dialogue, disturbance).errors);
}

// Attaches the same base, or another product, as soon as the base has left.
void replace(FaultyDevice& device, Return back) {
  if (back == Return::none) return;
  device.setOnPlugChange([&device, back] {
    if (device.isPlugged()) return;
    device.withBase([](SimulatedBase& base) { base.behaviour() = {}; });
    if (back == Return::same) {
      device.plug();
    } else {
      device.plugAs(FanatecProduct::lookup(otherProduct).value());
    }
  });
}

// Makes the base leave at the departure's n-th step. If that step is a wait for the write lock, the
// scene's other program holds it.
void leave(Cell& cell, Scene& scene, const Departure& departure, std::size_t n) {
  SimulatedSession& session = cell.session();
  const int number = static_cast<int>(n) - 1;
  const auto unplug = [&session] { session.device->unplug(); };
  session.behave([&](SimulatedBehaviour& base) { base.answerDelay = departure.answerDelay(); });
  if (departure.need == Need::writeLock) {
    EXPECT_TRUE(scene.come().askForWriteLock());
  }
  if (departure.need == Need::packet) {
    session.behave(
        [&](SimulatedBehaviour& base) { base.unplugAfter = receivedBefore + number + 1; });
  } else if (departure.need == Need::pause || departure.need == Need::writeLock) {
    session.clock.at(EventfulClock::Moment::pause, number, unplug);
  } else {
    session.clock.at(EventfulClock::Moment::request, number, unplug);
  }
}

TEST(SessionFaults, EverythingThatASessionCanBeAskedHasItsRow) {
  // Excluded: these send nothing to a base.
  std::set<std::string> covered{"create", "connection", "setOnTuningUpdate", "setOnStatusUpdate"};
  for (const Operation& operation : operations()) covered.insert(operation.member());
  std::set<std::string> members = changingMembers("session/wheel_base.h", "WheelBase");
  members.insert("packet");  // const, but it can throw
  EXPECT_EQ(covered, members);
}

TEST(SessionFaults, WithoutAFaultEveryOperationSucceedsInItsOwnTime) {
  for (const Operation& operation : operations()) {
    const Disturbance none = sessionDisturbance();
    Cell cell(operation);
    cell.expect(nothingWrong, 0, predict(operation.dialogue, none), operation.success);
    cell.expectRecovery();
  }
}

TEST(SessionFaults, EveryOperationMeetsABaseThatMisbehaves) {
  for (const Operation& operation : operations()) {
    for (const Misbehaviour& fault : misbehaviours()) {
      const std::size_t cells = fault.cellsIn(operation.dialogue);
      if (cells == 0) {
        FaultTable::addNotApplicable(tableName, operation.name, fault.name,
                                     reasonWithout(fault.need));
      }
      for (std::size_t n = 1; n <= cells; ++n) {
        Disturbance disturbance = sessionDisturbance();
        fault.disturb(disturbance, n);
        Cell cell(operation);
        cell.session().behave(
            [&](SimulatedBehaviour& base) { fault.make(base, receivedBefore, n); });
        cell.expect(fault.name, fault.isCounted ? n : 0, predict(operation.dialogue, disturbance),
                    wordsFor(operation, disturbance));
        cell.expectRecovery();
      }
    }
  }
}

TEST(SessionFaults, EveryOperationMeetsABaseThatLeavesAtEachStep) {
  for (const Operation& operation : operations()) {
    for (const Departure& departure : departures()) {
      const std::size_t cells = countOf(departure.need, operation.dialogue);
      for (const Return back : returns()) {
        const std::string name = nameOf(departure, back);
        if (cells == 0) {
          FaultTable::addNotApplicable(tableName, operation.name, name,
                                       reasonWithout(departure.need));
        }
        for (std::size_t n = 1; n <= cells; ++n) {
          Disturbance disturbance = sessionDisturbance();
          departure.disturb(disturbance, operation.dialogue, n);
          Cell cell(operation);
          Scene scene = cell.scene();
          replace(*cell.session().device, back);
          leave(cell, scene, departure, n);
          cell.expect(name, n, predict(operation.dialogue, disturbance),
                      wordsFor(operation, disturbance));
          EXPECT_EQ(cell.session().device->isPlugged(), back != Return::none);
        }
      }
    }
  }
}

TEST(SessionFaults, EveryOperationMeetsABaseThatHasLeftBefore) {
  for (const Operation& operation : operations()) {
    Disturbance disturbance = sessionDisturbance();
    disturbance.goneFrom = 0;
    std::string words = operation.words(predict(operation.dialogue, disturbance).errors);
    if (operation.opensNode) words = "HID I/O failed: device not found";
    Cell cell(operation);
    cell.session().device->unplug();
    cell.expect(leftBefore, 0, predict(operation.dialogue, disturbance), words);
  }
}

// One operation beside other programs. If all its parts fail, it must have written nothing.
void meet(const Operation& operation, const Company& company) {
  Operation beside = operation;
  beside.dialogue = company.change(operation.dialogue);
  Disturbance disturbance = sessionDisturbance();
  company.disturb(disturbance);
  const Prediction prediction = predict(beside.dialogue, disturbance);
  Cell cell(beside);
  Scene scene = cell.scene();
  company.make(scene);
  const Bytes before = scene.menuOnBase();
  cell.expect(company.name, 0, prediction, beside.words(prediction.errors), company.packetsOfOther);
  if (prediction.failsWholly()) {
    EXPECT_EQ(scene.menuOnBase(), before);
  }
  if (company.writes && valuesIn(operation.dialogue) > 0) {
    EXPECT_EQ(scene.valueOnBase(othersValue.parameter), othersValue.value);
  }
  scene.end();
  cell.expectRecovery();
}

TEST(SessionFaults, EveryOperationMeetsOthersAtTheSameBase) {
  for (const Operation& operation : operations()) {
    for (const Company& company : companies()) {
      SCOPED_TRACE(operation.name + ", " + company.name);
      if (countOf(company.need, operation.dialogue) > 0) {
        meet(operation, company);
      } else {
        FaultTable::addNotApplicable(tableName, operation.name, company.name,
                                     reasonWithout(company.need));
      }
    }
  }
}

TEST(SessionFaults, OnlyOpeningMeetsANodeThatIsRefused) {
  for (const Operation& operation : operations()) {
    for (const Refusal& refusal : refusals()) {
      if (!operation.opensNode) {
        FaultTable::addNotApplicable(tableName, operation.name, refusal.name,
                                     reasonWithout(Need::node));
        continue;
      }
      Cell cell(operation);
      cell.session().device->failOpenWith(refusal.code);
      cell.expect(refusal.name, 0, {}, "HID I/O failed: " + describeHIDReturn(refusal.code));
      EXPECT_FALSE(cell.session().base->connection().isOpen());
      cell.session().device->failOpenWith(HIDReturnCode::success);
      cell.session().base->connect();
      cell.expectRecovery();
    }
  }
}

TEST(SessionFaults, NoOperationTouchesADisk) {
  for (const Operation& operation : operations()) {
    SCOPED_TRACE(operation.name);
    SimulatedSession session;
    if (!operation.opensNode) session.connectAndRead(operation.use);
    const FileCalls calls;
    EXPECT_EQ(operation.run(*session.base), operation.success);
    EXPECT_TRUE(calls.made().empty()) << calls.made().front().name;
    for (const DiskFault& fault : diskFaults()) {
      FaultTable::addNotApplicable(tableName, operation.name, fault.name,
                                   reasonWithout(Need::file));
    }
  }
}

}  // namespace
}  // namespace quorvane
