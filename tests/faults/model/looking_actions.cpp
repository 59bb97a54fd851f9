#include <utility>

#include "tests/faults/model/action_lists.h"
#include "tests/faults/model/action_texts.h"

namespace quorvane {
namespace {

// Sends nothing, writes no file, and says nothing.
Action looking(std::string name, std::function<void(World&)> run) {
  Action action;
  action.name = std::move(name);
  action.run = std::move(run);
  action.lines = always(connectedStatus);
  action.withoutBase = absentStatus;
  return action;
}

}  // namespace

std::vector<Action> lookingActions() {
  const auto readHistory = [](World& world) {
    world.model().readHistory([](const HistoryContents&, const std::string&) {});
  };
  const auto readFile = [](World& world) {
    world.panels_.answerAtOnce(world.directory_ / sharedFile);
    world.model().readSettingsFile([](const std::vector<TuningPreset>&) {});
  };
  const auto readText = [](World& world) { world.model().settingsIn("FF=80"); };
  return {looking("readHistory", readHistory), looking("readSettingsFile", readFile),
          looking("settingsIn", readText)};
}

}  // namespace quorvane
