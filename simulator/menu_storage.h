#pragma once

#include <optional>

#include "simulator/simulated_menu.h"

namespace quorvane {

// Where a simulated base keeps its menu beyond the process, and shares it with the same base in
// other processes. Members block for files and throw std::runtime_error. One thread at a time
// calls.
class MenuStorage {
 public:
  virtual ~MenuStorage() = default;

  // The menu as it is kept now; none when nothing is kept yet.
  virtual std::optional<SimulatedMenu::State> read() = 0;

  // Keeps what differs between the two, and returns the whole menu as it is kept then: what others
  // changed elsewhere in it stays. After a failure the kept menu is as it was.
  virtual SimulatedMenu::State change(const SimulatedMenu::State& before,
                                      const SimulatedMenu::State& after) = 0;
};

}  // namespace quorvane
