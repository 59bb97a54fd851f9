#pragma once

#include <string>
#include <vector>

#include "cli/completion_place.h"
#include "cli/context.h"

namespace quorvane {

// A word for the shell to offer. The description may be empty.
struct CompletionCandidate {
  std::string word;
  std::string description;

  bool operator==(const CompletionCandidate&) const = default;
};

// All candidates for a place, not filtered by what is typed so far.
struct CompletionChoice {
  std::vector<CompletionCandidate> candidates;  // without the place's lead
  bool files = false;                           // also file names
};

// The known values for a place; precondition: place.value is set. Words, codes, set numbers,
// products, devices and presets. Reads the attached devices and the user's presets only if needed.
// Throws FileError for a user without a preset store.
CompletionChoice completionValues(const CompletionPlace& place, const World& world);

}  // namespace quorvane
