#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/simulated_menu.h"

namespace quorvane {

// The stored state of one simulated base, as in the state file.
struct SimulatedState {
  std::int64_t productID = 0;
  SimulatedMenu::State menu;

  bool operator==(const SimulatedState&) const = default;
};

// Encode and decode the states as one JSON document. Decoding is strict: any other document, or a
// menu that its product cannot have, throws DecodingError.
std::string encodeStates(const std::vector<SimulatedState>& states);
std::vector<SimulatedState> decodeStates(std::string_view text);

}  // namespace quorvane
