#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "simulator/simulated_device.h"
#include "tests/faults/fault.h"
#include "tests/faults/other_program.h"
#include "tests/support/eventful_clock.h"

namespace quorvane {

// One base, its clock, the menu that was read last, and the other program once it has come. What it
// arranges takes place while an operation pauses, so it outlives the operation.
class Scene {
 public:
  Scene(SimulatedDevice& base, EventfulClock& clock, TuningSnapshot menu);

  SimulatedDevice& base() { return base_; }
  const TuningSnapshot& menu() const { return menu_; }

  OtherProgram& come() { return other_.emplace(HIDEnumerator::info(base_.shared_from_this())); }

  // At the end of the pause with this number, counted from 0 and from now.
  void inPause(int number, std::function<void(OtherProgram&)> event);

  // The base's menu as it is now.
  Bytes menuOnBase();
  std::int64_t valueOnBase(TuningParameter parameter);

  // How many packets the base has taken from anybody since it was last asked.
  std::size_t takePackets();

  // The other program leaves, the system is well again, and whoever comes next has its turn at
  // once: the operation has left nothing in the line.
  void end();

 private:
  SimulatedDevice& base_;
  EventfulClock& clock_;
  const TuningSnapshot menu_;
  std::optional<OtherProgram> other_;
};

// A fault that comes from sharing a base with others, or from a system that tells nothing of them.
struct Company {
  std::string name;
  Need need = Need::nothing;
  std::function<void(Scene&)> make;  // before the operation begins

  // What the operation's dialogue becomes, and what goes wrong in it.
  std::function<Dialogue(const Dialogue&)> change;
  std::function<void(Disturbance&)> disturb;

  bool writes = false;             // othersValue, before the operation has its turn
  std::size_t packetsOfOther = 0;  // while the operation is under way
};

// What another program writes, and what no writing of another value may undo.
inline constexpr ParameterValue othersValue{TuningParameter::naturalFriction, 40};

const std::vector<Company>& companies();

}  // namespace quorvane
