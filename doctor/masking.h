#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "doctor/facts.h"

namespace quorvane {

// A text with personal data, and its replacement.
struct Secret {
  std::string text;
  std::string mask;

  bool operator==(const Secret&) const = default;
};

// The serial numbers, the home directory and the user's name in the facts, in the order in which to
// mask them. Leaves out the name "root" and the home directory "/".
std::vector<Secret> secretsIn(const DoctorFacts& facts);

// Masks every secret in the text that is a whole word, that is, without letters or digits next to
// it. Ignores case.
std::string masked(std::string_view text, const std::vector<Secret>& secrets);

}  // namespace quorvane
