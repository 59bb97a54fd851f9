#include "tests/faults/model/action_lists.h"
#include "tests/faults/model/action_texts.h"

namespace quorvane {
namespace {

std::string couldNotSavePresets(const std::string& reason) {
  return "[error] Could not save presets: presets.json: " + reason;
}

std::function<Lines(const std::string&)> loggedThenUnwritten(const std::string& line) {
  return [line](const std::string& reason) { return Lines{line, couldNotSavePresets(reason)}; };
}

Action capturing() {
  Action capture;
  capture.name = "saveCurrentAsPreset";
  capture.run = [](World& world) { world.model().saveCurrentAsPreset("New"); };
  capture.lines = always({"[log] Saved preset \"New\""});
  capture.withoutBase = absentStatus;
  capture.unwritten = [](const std::string& reason) {
    return Lines{couldNotSavePresets(reason), "[log] Saved preset \"New\""};
  };
  capture.presets = capture.presetsInFile = "Own New";

  return capture;
}

Action removing() {
  Action remove;
  remove.name = "deletePreset";
  remove.run = [](World& world) {
    world.model().deletePreset(world.model().userPresets().front());
  };
  remove.lines = always({"[log] Deleted \"Own\""});
  remove.withoutBase = {"[log] Deleted \"Own\""};
  remove.unwritten = [](const std::string& reason) {
    return Lines{"[log] Deleted \"Own\"", couldNotSavePresets(reason)};
  };
  remove.presets = remove.presetsInFile = "";

  return remove;
}

Action undoing() {
  Action undo;
  undo.name = "undoPresets";
  undo.prepare = [](World& world) {
    world.model().deletePreset(world.model().userPresets().front());
    world.takeSeen();
  };
  undo.run = [](World& world) { world.model().undoPresets(); };
  undo.lines = always({"[log] Brought back \"Own\""});
  undo.withoutBase = {"[log] Brought back \"Own\""};
  undo.unwritten = [](const std::string& reason) {
    return Lines{"[log] Brought back \"Own\"", couldNotSavePresets(reason)};
  };
  undo.presetsInFileBefore = "";

  return undo;
}

Action editing() {
  Action edit;
  edit.name = "editPreset";
  edit.run = [](World& world) {
    const TuningPreset before = world.model().userPresets().front();
    TuningPreset after = before;
    after.name = "Edited";
    world.model().editPreset(before, after);
  };
  const std::string edited = R"([log] Edited preset "Edited", before "Own")";
  edit.lines = always({edited});
  edit.withoutBase = {edited};
  edit.unwritten = loggedThenUnwritten(edited);
  edit.presets = edit.presetsInFile = "Edited";

  return edit;
}

Action replacing() {
  Action replace;
  replace.name = "replacePreset";
  replace.run = [](World& world) {
    world.model().replacePreset(world.model().userPresets().front());
  };
  const std::string replaced = R"([log] Replaced the values of preset "Own")";
  replace.lines = always({replaced});
  replace.withoutBase = absentStatus;
  replace.unwritten = loggedThenUnwritten(replaced);

  return replace;
}

Action duplicating() {
  Action duplicate;
  duplicate.name = "duplicatePreset";
  duplicate.run = [](World& world) {
    world.model().duplicatePreset(TuningPreset::builtIn().front());
  };
  const std::string duplicated =
      R"([log] Duplicated preset "Fanatec factory defaults" as "Fanatec factory defaults copy")";
  duplicate.lines = always({duplicated});
  duplicate.withoutBase = {duplicated};
  duplicate.unwritten = loggedThenUnwritten(duplicated);
  duplicate.presets = duplicate.presetsInFile = "Own Fanatec factory defaults copy";

  return duplicate;
}

Action moving() {
  Action move;
  move.name = "movePreset";
  move.prepare = [](World& world) {
    world.model().duplicatePreset(TuningPreset::builtIn().front());
    world.takeSeen();
  };
  move.run = [](World& world) {
    world.model().movePreset(world.model().userPresets().front(), {});
  };
  const std::string moved = R"([log] Moved preset "Own" to place 2 of 2)";
  move.lines = always({moved});
  move.withoutBase = {moved};
  move.unwritten = loggedThenUnwritten(moved);
  move.presets = move.presetsInFile = "Fanatec factory defaults copy Own";
  move.presetsInFileBefore = "Own Fanatec factory defaults copy";

  return move;
}

// Of one file, of the same one through the dialog, and of a list of files.
Action importingOne() {
  Action one;
  one.name = "importSettings";
  one.run = [](World& world) { world.model().importSettings(world.directory_ / sharedFile); };
  const std::string imported = R"([log] Imported "Shared" from shared.quorvane)";
  one.lines = always({imported});
  one.withoutBase = {imported + "; connect a base to apply it"};
  one.unwritten = loggedThenUnwritten(imported);
  one.presets = one.presetsInFile = "Own Shared";
  return one;
}

Action importingAll() {
  Action all = importingOne();
  all.name = "importAll";
  all.run = [](World& world) { world.model().importAll({world.directory_ / sharedFile}); };
  return all;
}

Action importingChosen() {
  Action chosen = importingOne();
  chosen.name = "importSettingsFile";
  chosen.run = [](World& world) {
    world.panels_.answerAtOnce(world.directory_ / sharedFile);
    world.model().importSettingsFile();
  };
  return chosen;
}

}  // namespace

std::vector<Action> presetActions() {
  return {capturing(),       removing(), undoing(),   importingOne(), importingAll(),
          importingChosen(), editing(),  replacing(), duplicating(),  moving()};
}

}  // namespace quorvane
