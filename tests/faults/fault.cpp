#include "tests/faults/fault.h"

#include <algorithm>
#include <cerrno>

#include "tests/hid_codes.h"

namespace quorvane {
namespace {

std::size_t menuAnswersIn(const Dialogue& dialogue) {
  std::size_t count = 0;
  for (const Part& part : dialogue) {
    count += static_cast<std::size_t>(
        std::count_if(part.steps.begin(), part.steps.end(),
                      [](const Step& step) { return step.kind == Step::Kind::menuAnswer; }));
  }
  return count;
}

Misbehaviour refusedPackets(std::string name, int count) {
  return {std::move(name),
          Need::packet,
          true,
          false,
          [count](SimulatedBehaviour& base, int before, std::size_t n) {
            base.failSendsWith = otherCode;
            base.failSendsFrom = before + static_cast<int>(n) - 1;
            base.failSendsCount = count;
          },
          [count](Disturbance& disturbance, std::size_t n) {
            disturbance.refusedFrom = n;
            disturbance.refusedCount = static_cast<std::size_t>(count);
          }};
}

Misbehaviour lateAnswers(std::string name, Seconds delay) {
  return {std::move(name),
          Need::answer,
          false,
          false,
          [delay](SimulatedBehaviour& base, int, std::size_t) { base.answerDelay = delay; },
          [delay](Disturbance& disturbance, std::size_t) { disturbance.answerAfter = delay; }};
}

}  // namespace

std::string reasonWithout(Need need) {
  switch (need) {
    case Need::nothing:
      return {};
    case Need::packet:
      return "sends nothing";
    case Need::pause:
      return "has no pause";
    case Need::answer:
      return "waits for no answer";
    case Need::menu:
      return "waits for no menu";
    case Need::value:
      return "writes no value";
    case Need::values:
      return "writes no second value";
    case Need::writeLock:
      return "takes no write lock";
    case Need::node:
      return "opens no node";
    case Need::file:
      return "writes no file";
  }
  return {};
}

std::size_t countOf(Need need, const Dialogue& dialogue) {
  switch (need) {
    case Need::nothing:
      return 1;
    case Need::packet:
      return packetsIn(dialogue);
    case Need::pause:
      return pausesIn(dialogue);
    case Need::answer:
      return answersIn(dialogue);
    case Need::menu:
      return menuAnswersIn(dialogue);
    case Need::value:
      return valuesIn(dialogue);
    case Need::values:
      return std::max<std::size_t>(valuesIn(dialogue), 1) - 1;
    case Need::writeLock:
      return std::min<std::size_t>(turnsIn(dialogue), 1);
    case Need::node:
    case Need::file:
      return 0;
  }
  return 0;
}

std::size_t Misbehaviour::cellsIn(const Dialogue& dialogue) const {
  const std::size_t count = countOf(need, dialogue);
  return isCounted ? count : std::min<std::size_t>(count, 1);
}

const std::vector<Misbehaviour>& misbehaviours() {
  static const std::vector<Misbehaviour> all{
      refusedPackets("packet # is refused", 1),
      refusedPackets("packet # and all later ones are refused", std::numeric_limits<int>::max()),
      {"no answer", Need::answer, false, false,
       [](SimulatedBehaviour& base, int, std::size_t) { base.silent = true; },
       [](Disturbance& disturbance, std::size_t) { disturbance.answerAfter.reset(); }},
      lateAnswers("answers after 1.9 s", Seconds(1.9)),
      lateAnswers("answers after 2.1 s", Seconds(2.1)),
      {"an old menu 10 ms before each answer", Need::menu, false, true,
       [](SimulatedBehaviour& base, int, std::size_t) { base.staleAnswers = true; },
       [](Disturbance& disturbance, std::size_t) { disturbance.tellsOldMenus = true; }},
      {"short and foreign reports before each answer", Need::answer, false, false,
       [](SimulatedBehaviour& base, int, std::size_t) { base.foreignReports = true; },
       [](Disturbance&, std::size_t) {}},
      {"the base keeps FF at 70 at most", Need::value, false, false,
       [](SimulatedBehaviour& base, int, std::size_t) {
         base.most = {{TuningParameter::forceFeedback, 70}};
       },
       [](Disturbance& disturbance, std::size_t) {
         disturbance.badCode = "FF";
         disturbance.badKept = "70";
       }},
      {"the base ignores FF", Need::value, false, false,
       [](SimulatedBehaviour& base, int, std::size_t) {
         base.ignored = {TuningParameter::forceFeedback};
       },
       [](Disturbance& disturbance, std::size_t) {
         disturbance.badCode = "FF";
         disturbance.badKept = "65";
       }},
  };
  return all;
}

// A base that leaves during an answer is gone from that step on, otherwise from the next one on.
void Departure::disturb(Disturbance& disturbance, const Dialogue& dialogue, std::size_t n) const {
  const std::size_t step = stepOf(dialogue, n);
  disturbance.goneFrom = need == Need::answer ? step : step + 1;
  disturbance.answerAfter = answerDelay();
  if (need == Need::writeLock) {
    disturbance.writeLockTaken = n;
    disturbance.writeLockAfter = Seconds(0.01);
  }
}

Seconds Departure::answerDelay() const { return Seconds(need == Need::answer ? 0.001 : 0); }

const std::vector<Departure>& departures() {
  static const std::vector<Departure> all{
      {"the base leaves on packet #", Need::packet, stepOfPacket},
      {"the base leaves in pause #", Need::pause, stepOfPause},
      {"the base leaves while answer # is awaited", Need::answer, stepOfAnswer},
      {"the base leaves while another program holds the write lock", Need::writeLock,
       stepOfWriteLock},
  };
  return all;
}

const std::vector<Return>& returns() {
  static const std::vector<Return> all{Return::none, Return::same, Return::other};
  return all;
}

std::string nameOf(const Departure& departure, Return back) {
  switch (back) {
    case Return::none:
      return departure.name;
    case Return::same:
      return departure.name + " and returns";
    case Return::other:
      return departure.name + ", another product comes";
  }
  return departure.name;
}

const std::vector<Refusal>& refusals() {
  static const std::vector<Refusal> all{
      {"no permission for the node", HIDReturnCode::notPermitted, EACCES},
      {"another program holds the node", HIDReturnCode::exclusiveAccess, EBUSY},
  };
  return all;
}

const std::vector<DiskFault>& diskFaults() {
  static const std::vector<DiskFault> all{
      {"the disk is full", "No space left on device", false},
      {"the disk is read-only", "Read-only file system", true},
  };
  return all;
}

}  // namespace quorvane
