#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "doctor/facts.h"

namespace quorvane {

// A text that others should not see, and what stands in its place.
struct Secret {
  std::string text;
  std::string mask;

  bool operator==(const Secret&) const = default;
};

// The serial numbers, the home directory and the user's name in the facts; in the order in which
// they are to be masked. The name "root" and a home in "/" are nobody's secrets.
std::vector<Secret> secretsIn(const DoctorFacts& facts);

// The text with every secret masked that stands alone, between characters that are no letters or
// digits, in whatever case.
std::string masked(std::string_view text, const std::vector<Secret>& secrets);

}  // namespace quorvane
