#pragma once

#include <string>
#include <vector>

#include "cli/completion_place.h"
#include "cli/context.h"

namespace quorvane {

// A word that a shell may offer. Its description may be empty.
struct CompletionCandidate {
  std::string word;
  std::string description;

  bool operator==(const CompletionCandidate&) const = default;
};

// What may stand in a place, whatever is typed there so far.
struct CompletionChoice {
  std::vector<CompletionCandidate> candidates;  // without the place's lead
  bool files = false;                           // and the names of files
};

// The values that can be told in advance for a place that has one: words, codes, set numbers,
// products, devices and presets. Looks at the attached devices and the user's presets only where
// they matter. Throws FileError for a user who has no store of presets.
CompletionChoice completionValues(const CompletionPlace& place, const World& world);

}  // namespace quorvane
