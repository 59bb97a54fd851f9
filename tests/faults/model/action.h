#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tests/faults/model/world.h"

namespace quorvane {

// Something that the model can be asked to do, and what a person sees of it.
struct Action {
  // What has happened before.
  enum class Before {
    nothing,    // the model is not there yet
    connected,  // a base is connected, and something is staged
    refused,    // a base is attached that could not be opened
  };

  using Errors = Prediction::Errors;

  std::string name;
  std::function<void(World&)> run;
  Dialogue dialogue;

  // The lines for failures of the dialogue's parts.
  std::function<Lines(const Errors&)> lines;

  Lines withoutBase;  // the lines when there is no base
  Lines oldMenu;      // the lines when an old menu is taken for the answer, if others
  Before before = Before::connected;
  std::function<void(World&)> prepare;  // what else has happened

  // A departure in the middle shows in no line but the status, and ends what was seen before.
  bool isOpening = false;

  // What is staged before it, after it (without a function it stays) and after it without a base.
  std::string staged = "SHO=50";
  std::function<std::string(const Errors&)> stagedAfter;
  std::string stagedWithoutBase;

  // The line when the node is not opened; without a function, it opens none.
  std::function<std::string(const Refusal&)> refused;

  // The lines when no file can be written, for the system's reason; without a function, it writes
  // none.
  std::function<Lines(const std::string&)> unwritten;

  std::string presets = ownPreset;  // the names of the user's presets after it
  std::string presetsInFile = ownPreset;
  std::string presetsInFileBefore = ownPreset;
  bool writesFile = false;  // besides the one of the presets

  // Not with the model's own session: its waits do not end with the base's departure.
  bool waitsInVain = false;

  Lines linesFor(const Disturbance& disturbance) const;
  std::string stagedFor(const Disturbance& disturbance) const;
};

const std::vector<Action>& actions();

}  // namespace quorvane
