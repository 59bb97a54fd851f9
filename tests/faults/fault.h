#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "simulator/simulated_base.h"
#include "tests/faults/dialogue.h"

namespace quorvane {

// What an operation must have for a fault to meet it.
enum class Need { nothing, packet, pause, answer, menu, value, values, turn, node, file };

// Why a fault cannot meet an operation that has none of it.
std::string reasonWithout(Need need);

// How many of it a dialogue has: for a fault of the n-th packet, the number of packets, otherwise
// whether there is any. Nodes and files do not show in dialogues.
std::size_t countOf(Need need, const Dialogue& dialogue);

// A fault of the base that stays where it is.
struct Misbehaviour {
  std::string name;  // "#" stands for n
  Need need = Need::nothing;
  bool isCounted = false;  // one cell for each n, which counts from 1
  bool showsOldMenus = false;

  // Makes a base behave so, that has received some packets before.
  std::function<void(SimulatedBehaviour&, int before, std::size_t n)> make;
  std::function<void(Disturbance&, std::size_t n)> disturb;

  std::size_t cellsIn(const Dialogue& dialogue) const;
};

const std::vector<Misbehaviour>& misbehaviours();

// When a base leaves.
struct Departure {
  std::string name;
  Need need = Need::nothing;
  std::size_t (*stepOf)(const Dialogue&, std::size_t n) = nullptr;

  void disturb(Disturbance& disturbance, const Dialogue& dialogue, std::size_t n) const;

  // How long its answers take until then: not so short that one comes before it leaves.
  Seconds answerDelay() const;
};

const std::vector<Departure>& departures();

// What comes after it has left.
enum class Return { none, same, other };
const std::vector<Return>& returns();
std::string nameOf(const Departure& departure, Return back);

inline constexpr const char* leftBefore = "the base has left before";
inline constexpr const char* nothingWrong = "nothing goes wrong";

// Openings that the system refuses.
struct Refusal {
  std::string name;
  HIDReturn code = HIDReturnCode::success;
  int error = 0;  // the errno for a node of the USB bus
};

const std::vector<Refusal>& refusals();

// Disks that take nothing.
struct DiskFault {
  std::string name;
  std::string text;  // the system's
  bool isReadOnly = false;
};

const std::vector<DiskFault>& diskFaults();

}  // namespace quorvane
