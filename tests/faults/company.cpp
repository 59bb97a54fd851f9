#include "tests/faults/company.h"

#include <gtest/gtest.h>

#include <utility>

#include "tests/faults/packets.h"

namespace quorvane {
namespace {

using Moment = EventfulClock::Moment;

constexpr std::int64_t otherSet = 4;
constexpr const char* otherSetText =
    "Invalid report: the base is in set 4 of the standard menu now, not in set 2 of the standard "
    "menu; write it again if it belongs there";

Dialogue asEver(const Dialogue& dialogue) { return dialogue; }
void undisturbed(Disturbance& /*disturbance*/) {}

// The menu is read before each value: others have or had the base open, or it is unknown.
Dialogue readingBeforeEach(Dialogue dialogue) {
  for (Part& part : dialogue) {
    if (!part.code.empty()) part = readFirst(std::move(part));
  }
  return dialogue;
}

// From the part with this index on, values meant for another set are refused.
Dialogue refusedFrom(std::size_t first, Dialogue dialogue) {
  for (std::size_t part = first; part < dialogue.size(); ++part) {
    if (dialogue[part].isMeant) dialogue[part] = refused(std::move(dialogue[part]), otherSetText);
  }
  return dialogue;
}

std::vector<Company> writeLocks() {
  return {
      {"another program keeps the write lock", Need::writeLock,
       [](Scene& scene) { EXPECT_TRUE(scene.come().askForWriteLock()); }, asEver,
       [](Disturbance& disturbance) { disturbance.writeLockAfter.reset(); }},
      {"another program releases the write lock after 0.5 s", Need::writeLock,
       [](Scene& scene) {
         EXPECT_TRUE(scene.come().askForWriteLock());
         scene.inPause(49, [](OtherProgram& other) { other.releaseWriteLock(); });
       },
       readingBeforeEach,
       [](Disturbance& disturbance) {
         disturbance.writeLockTaken = 1;
         disturbance.writeLockAfter = Seconds(0.5);
       }},
      {"another program writes and dies while it holds the write lock", Need::writeLock,
       [](Scene& scene) {
         EXPECT_TRUE(scene.come().askForWriteLock());
         scene.inPause(2, [menu = scene.menu()](OtherProgram& other) {
           other.write(menu, othersValue);
           other.leave();
         });
       },
       readingBeforeEach,
       [](Disturbance& disturbance) {
         disturbance.writeLockTaken = 1;
         disturbance.writeLockAfter = Seconds(0.03);
       },
       true, 1},
      {"the system has no locks", Need::writeLock,
       [](Scene& scene) { scene.base().setHasWriteLocks(false); }, readingBeforeEach, undisturbed},
  };
}

std::vector<Company> writings() {
  const auto hasWritten = [](Scene& scene) {
    OtherProgram& other = scene.come();
    other.write(scene.menu(), othersValue);
    other.leave();
  };
  return {
      {"another program has written since the last report", Need::value, hasWritten,
       readingBeforeEach, undisturbed, true},
      {"another program has written since the last report, no answer", Need::value,
       [hasWritten](Scene& scene) {
         hasWritten(scene);
         scene.base().withBase([](SimulatedBase& base) { base.behaviour().silent = true; });
       },
       readingBeforeEach, [](Disturbance& disturbance) { disturbance.answerAfter.reset(); }, true},
      {"another program has the base open, and has written", Need::value,
       [](Scene& scene) { scene.come().write(scene.menu(), othersValue); }, readingBeforeEach,
       undisturbed, true},
      {"the system does not tell who opens the node", Need::value,
       [](Scene& scene) { scene.base().setTellsOpenings(false); }, readingBeforeEach, undisturbed},
  };
}

std::vector<Company> switches() {
  return {
      {"another program has made set 4 active since the last report", Need::value,
       [](Scene& scene) {
         OtherProgram& other = scene.come();
         other.selectSet(otherSet);
         other.leave();
       },
       [](const Dialogue& dialogue) { return readingBeforeEach(refusedFrom(0, dialogue)); },
       undisturbed, false, 0, true},
      {"another program makes set 4 active after the first value", Need::values,
       [](Scene& scene) {
         scene.come();
         scene.inPause(0, [](OtherProgram& other) { EXPECT_FALSE(other.askForWriteLock()); });
         scene.inPause(1, [](OtherProgram& other) {
           EXPECT_TRUE(other.askForWriteLock());
           other.selectSet(otherSet);
           other.releaseWriteLock();
         });
       },
       [](const Dialogue& dialogue) { return readingBeforeEach(refusedFrom(1, dialogue)); },
       [](Disturbance& disturbance) {
         disturbance.writeLockTaken = 2;
         disturbance.writeLockAfter = Seconds(0.01);
       },
       false, 1},
  };
}

}  // namespace

Scene::Scene(FaultyDevice& base, EventfulClock& clock, TuningSnapshot menu)
    : base_(base), clock_(clock), menu_(std::move(menu)) {}

void Scene::inPause(int number, std::function<void(OtherProgram&)> event) {
  clock_.at(Moment::pause, number, [this, event = std::move(event)] { event(other_.value()); });
}

Bytes Scene::menuOnBase() {
  Bytes report;
  base_.withBase([&](SimulatedBase& base) { report = base.menu().report(); });
  return report;
}

std::int64_t Scene::valueOnBase(TuningParameter parameter) {
  const auto product = FanatecProduct::lookup(defaultSimulatedProduct);
  return TuningSnapshot::fromReport(menuOnBase(), {}).value().value(parameter, product);
}

std::size_t Scene::takePackets() {
  const std::size_t taken = packetsTaken(base_.transcript().lines());
  base_.transcript().clear();
  return taken;
}

void Scene::end() {
  other_.reset();
  base_.setHasWriteLocks(true);
  base_.setTellsOpenings(true);
  EXPECT_TRUE(come().askForWriteLock());
  other_.reset();
}

const std::vector<Company>& companies() {
  static const std::vector<Company> all = [] {
    std::vector<Company> list = writeLocks();
    for (const auto& more : {writings(), switches()}) {
      list.insert(list.end(), more.begin(), more.end());
    }
    return list;
  }();
  return all;
}

}  // namespace quorvane
