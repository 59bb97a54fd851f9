#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tests/faults/fault.h"
#include "tests/faults/other_program.h"
#include "tests/simulator/faulty_device.h"
#include "tests/support/eventful_clock.h"

namespace quorvane {

// One base, its clock, the menu that was read last, and the other program once come() was called.
// Must outlive the operation: its events run during the operation's pauses.
class Scene {
 public:
  Scene(FaultyDevice& base, EventfulClock& clock, TuningSnapshot menu);

  FaultyDevice& base() { return base_; }
  const TuningSnapshot& menu() const { return menu_; }

  OtherProgram& come() { return other_.emplace(HIDEnumerator::info(base_.shared_from_this())); }

  // Calls event at the end of the n-th pause from now, n from 0. The other program must be there.
  void inPause(int number, std::function<void(OtherProgram&)> event);

  // The base's current menu.
  Bytes menuOnBase();
  std::int64_t valueOnBase(TuningParameter parameter);

  // How many packets the base has taken, from any program, since the last call.
  std::size_t takePackets();

  // Closes the other program, ends the system's faults, and expects that a new program gets the
  // write lock at once: the operation has left no lock in the queue.
  void end();

 private:
  FaultyDevice& base_;
  EventfulClock& clock_;
  const TuningSnapshot menu_;
  std::optional<OtherProgram> other_;
};

// A fault caused by other programs at the base, or by a system that cannot detect them.
struct Company {
  std::string name;
  Need need = Need::nothing;
  std::function<void(Scene&)> make;  // called before the operation begins

  // The operation's dialogue with this fault, and what goes wrong in it.
  std::function<Dialogue(const Dialogue&)> change;
  std::function<void(Disturbance&)> disturb;

  bool writes = false;             // writes othersValue before the operation gets the write lock
  std::size_t packetsOfOther = 0;  // packets that the other program sends during the operation
  bool switchesSet = false;        // makes another set active before the operation
};

// What the other program writes. The operation's own writes must not undo it.
inline constexpr ParameterValue othersValue{TuningParameter::naturalFriction, 40};

const std::vector<Company>& companies();

}  // namespace quorvane
