#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "simulator/simulated_base.h"
#include "tests/faults/dialogue.h"

namespace quorvane {

// What a dialogue must contain for a fault to apply to its operation.
enum class Need { nothing, packet, pause, answer, menu, value, values, writeLock, node, file };

// Why a fault does not apply to an operation without it.
std::string reasonWithout(Need need);

// How many a dialogue has: for Need::values those after the first value, for Need::writeLock at
// most 1, for Need::nothing always 1, for nodes and files, which no dialogue shows, always 0.
std::size_t countOf(Need need, const Dialogue& dialogue);

// A fault of a base that stays attached.
struct Misbehaviour {
  std::string name;  // "#" stands for n
  Need need = Need::nothing;
  bool isCounted = false;  // one cell for each n, which counts from 1
  bool showsOldMenus = false;

  // Configures the fault in a base that has received `before` packets so far.
  std::function<void(SimulatedBehaviour&, int before, std::size_t n)> make;
  std::function<void(Disturbance&, std::size_t n)> disturb;

  std::size_t cellsIn(const Dialogue& dialogue) const;
};

const std::vector<Misbehaviour>& misbehaviours();

// A point of a dialogue at which the base leaves.
struct Departure {
  std::string name;
  Need need = Need::nothing;
  std::size_t (*stepOf)(const Dialogue&, std::size_t n) = nullptr;

  void disturb(Disturbance& disturbance, const Dialogue& dialogue, std::size_t n) const;

  // The delay of answers until then: above 0 if it leaves during an answer, so that it leaves
  // before the answer arrives.
  Seconds answerDelay() const;
};

const std::vector<Departure>& departures();

// What is attached after the base has left: nothing, the same base, another product.
enum class Return { none, same, other };
const std::vector<Return>& returns();
std::string nameOf(const Departure& departure, Return back);

inline constexpr const char* leftBefore = "the base has left before";
inline constexpr const char* nothingWrong = "nothing goes wrong";

// Errors of the system for opening a node.
struct Refusal {
  std::string name;
  HIDReturn code = HIDReturnCode::success;
  int error = 0;  // the errno for a node of the USB bus
};

const std::vector<Refusal>& refusals();

// Disks that cannot be written to.
struct DiskFault {
  std::string name;
  std::string text;  // the system's error text
  bool isReadOnly = false;
};

const std::vector<DiskFault>& diskFaults();

}  // namespace quorvane
