#pragma once

#include <optional>

#include "simulator/simulated_menu.h"

namespace quorvane {

// Stores the menu of a simulated base outside the process, and shares it with the same base in
// other processes. Members block on file access and throw std::runtime_error. Not thread-safe.
class MenuStorage {
 public:
  virtual ~MenuStorage() = default;

  // The stored menu; none before the first change.
  virtual std::optional<SimulatedMenu::State> read() = 0;

  // Stores only the bytes that differ between the two, and returns the whole stored menu: changes
  // by other processes to other bytes stay. A failure leaves the stored menu unchanged.
  virtual SimulatedMenu::State change(const SimulatedMenu::State& before,
                                      const SimulatedMenu::State& after) = 0;
};

}  // namespace quorvane
