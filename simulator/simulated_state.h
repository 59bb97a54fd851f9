#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/simulated_menu.h"

namespace quorvane {

// What one simulated base keeps, as a file has it.
struct SimulatedState {
  std::int64_t productID = 0;
  SimulatedMenu::State menu;

  bool operator==(const SimulatedState&) const = default;
};

// The bases as one JSON document, and back. Reading is strict: what is no such document, or has a
// menu that its product cannot have, throws DecodingError.
std::string encodeStates(const std::vector<SimulatedState>& states);
std::vector<SimulatedState> decodeStates(std::string_view text);

}  // namespace quorvane
