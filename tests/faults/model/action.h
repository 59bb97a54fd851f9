#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tests/faults/model/world.h"

namespace quorvane {

// An action of the model, and what the user sees of it.
struct Action {
  // The state before the action.
  enum class Before {
    nothing,    // there is no model yet
    connected,  // a base is connected, and something is staged
    refused,    // a base is attached that could not be opened
  };

  using Errors = Prediction::Errors;

  std::string name;
  std::function<void(World&)> run;
  Dialogue dialogue;

  // The lines that are shown, for the errors of the dialogue's parts.
  std::function<Lines(const Errors&)> lines;

  Lines withoutBase;  // the lines when there is no base
  Lines oldMenu;      // the lines when an old menu is taken for the answer; empty: as `lines`
  Before before = Before::connected;
  std::function<void(World&)> prepare;  // called last, before the action

  // The action opens the base itself. If the base leaves during it, only the status line says so,
  // and what was shown before is dropped.
  bool isOpening = false;

  // What is staged before the action, after it (empty function: unchanged), and after it if there
  // is no base.
  std::string staged = "SHO=50";
  std::function<std::string(const Errors&)> stagedAfter;
  std::string stagedWithoutBase;

  // The lines when the action itself finds in its first part that another set is active: it sends
  // nothing more. Empty: the session refuses each value.
  Lines inOtherSet;

  // The line when opening the node fails. Empty function: the action opens no node.
  std::function<std::string(const Refusal&)> refused;

  // The lines when no file can be written, for the system's error text. Empty function: the action
  // writes no file.
  std::function<Lines(const std::string&)> unwritten;

  std::string presets = ownPreset;  // the names of the user's presets after the action
  std::string presetsInFile = ownPreset;
  std::string presetsInFileBefore = ownPreset;
  bool writesFile = false;  // other than the preset file

  // The action has a session of its own, which waits until the time-out when the base leaves.
  bool waitsInVain = false;

  Lines linesFor(const Disturbance& disturbance) const;
  std::string stagedFor(const Disturbance& disturbance) const;
};

const std::vector<Action>& actions();

}  // namespace quorvane
