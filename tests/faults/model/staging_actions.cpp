#include <utility>

#include "tests/faults/model/action_lists.h"
#include "tests/faults/model/action_texts.h"

namespace quorvane {
namespace {

using P = TuningParameter;

// An action that sends nothing.
Action staging(std::string name, std::function<void(World&)> run, Lines lines, std::string after) {
  Action action;
  action.name = std::move(name);
  action.run = std::move(run);
  action.lines = always(std::move(lines));
  action.withoutBase = absentStatus;
  action.stagedAfter = [after = std::move(after)](const Action::Errors&) { return after; };
  return action;
}

}  // namespace

std::vector<Action> stagingActions() {
  Action stage = staging(
      "stage", [](World& world) { world.model().stage(P::forceFeedback, 80); }, connectedStatus,
      "FF=80 SHO=50");
  stage.stagedWithoutBase = "FF=80";
  Action load = staging(
      "stagePreset",
      [](World& world) {
        world.model().stagePreset(testPreset({{P::forceFeedback, 80}}));
      },
      {"[log] Loaded \"Test\": 2 values to save"}, "FF=80 SHO=50");
  load.withoutBase = {"[log] Loaded \"Test\": 1 value to save"};
  load.stagedWithoutBase = "FF=80";
  return {
      stage,
      staging(
          "revert", [](World& world) { world.model().revert(P::vibration); }, connectedStatus, ""),
      load,
      staging(
          "takeBackEdit", [](World& world) { world.model().takeBackEdit(); }, connectedStatus, ""),
      staging(
          "discardStaged", [](World& world) { world.model().discardStaged(); },
          {"[log] Discarded 1 unsaved change"}, "")};
}

}  // namespace quorvane
