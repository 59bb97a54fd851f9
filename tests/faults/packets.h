#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

namespace quorvane {

// How many packets the base took, of those in its transcript.
inline std::size_t packetsTaken(const std::vector<std::string>& transcript) {
  return static_cast<std::size_t>(
      std::count_if(transcript.begin(), transcript.end(), [](const std::string& line) {
        return line.starts_with("> ") && line.find(" failed ") == std::string::npos;
      }));
}

}  // namespace quorvane
