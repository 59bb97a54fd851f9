#include "tests/faults/model/action.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <utility>

namespace quorvane {
namespace {

using P = TuningParameter;
using Errors = Action::Errors;

const Lines connectedStatus{std::string("[status] Connected to ") + baseName};
const Lines absentStatus{std::string("[status] ") + noBaseStatus};
const Lines notConnectedLine{"[error] No base connected"};

constexpr const char* threeEdits = "SEN=800 FF=80 NIN=9";

Part identityRead() { return {{menuPacket, menuPacket, identityAnswer}, {}, {}}; }
Part menuRead() { return {{menuPacket, menuAnswer}, {}, {}, true}; }

Dialogue threeWrites() {
  return {meantWrite("SEN", "900"), meantWrite("FF", "65"), meantWrite("NIN", "5")};
}

Dialogue menuCommand(double seconds) {
  return {{{ownWriteLock, menuPacket, pauseOf(seconds), menuPacket, menuAnswer}, {}, {}, true}};
}

// "FF: ERROR" for each value that failed.
Lines rejections(const Errors& errors) {
  Lines texts;
  const Dialogue writes = threeWrites();
  for (std::size_t part = 0; part < errors.size(); ++part) {
    if (errors[part]) texts.push_back(fmt::format("{}: {}", writes[part].code, *errors[part]));
  }
  return texts;
}

std::function<Lines(const Errors&)> always(Lines lines) {
  return [lines = std::move(lines)](const Errors&) { return lines; };
}

std::function<std::string(const Errors&)> nothingStaged() {
  return [](const Errors&) { return std::string(); };
}

// The lines of an action that shows its title and the error when it fails.
std::function<Lines(const Errors&)> titled(const std::string& title, const Lines& success) {
  return [=](const Errors& errors) {
    if (!errors.front()) return success;
    return Lines{fmt::format("[error] {} failed: {}", title, *errors.front())};
  };
}

TuningPreset testPreset(const std::vector<ParameterValue>& values) {
  return presetOf("Test", values);
}

std::string couldNotOpen(const Refusal& refusal) {
  return fmt::format("[error] Could not open {}: HID I/O failed: {}", displayName,
                     describeHIDReturn(refusal.code));
}

Lines connectingLines(const Errors& errors) {
  Lines lines{fmt::format("[log] Connected to {}", errors[0] ? displayName : baseName)};
  if (errors[1]) lines.emplace_back(noAnswerLine);
  return lines;
}

std::vector<Action> connecting() {
  Action start;
  start.name = "connecting to a base that is there";
  start.run = [](World& world) { world.create(); };
  start.dialogue = {identityRead(), menuRead()};
  start.lines = connectingLines;
  start.withoutBase = absentStatus;
  start.before = Action::Before::nothing;
  start.isOpening = true;
  start.staged = "";
  start.refused = couldNotOpen;

  Action again = start;
  again.name = "connect";
  again.run = [](World& world) { world.model().connect(world.info(0)); };
  again.withoutBase = {
      fmt::format("[error] Could not open {}: HID I/O failed: device not found", displayName)};
  again.before = Action::Before::connected;
  again.staged = "SHO=50";
  again.stagedAfter = nothingStaged();

  Action disconnect;
  disconnect.name = "disconnect";
  disconnect.run = [](World& world) { world.model().disconnect(); };
  disconnect.lines = always({"[status] No base connected"});
  disconnect.withoutBase = {"[status] No base connected"};
  disconnect.stagedAfter = nothingStaged();
  return {start, again, disconnect};
}

Action reading(std::string name, const std::string& title, void (AppModel::*read)()) {
  Action action;
  action.name = std::move(name);
  action.run = [read](World& world) { (world.model().*read)(); };
  action.dialogue = {menuRead(), identityRead()};
  action.lines = titled(title, connectedStatus);
  action.withoutBase = notConnectedLine;
  return action;
}

Action commanding(std::string name, const std::string& title, Dialogue dialogue,
                  const std::string& success, std::function<void(World&)> run) {
  Action action;
  action.name = std::move(name);
  action.run = std::move(run);
  action.dialogue = std::move(dialogue);
  action.lines = titled(title, {success});
  action.withoutBase = notConnectedLine;
  return action;
}

std::vector<Action> exchanges() {
  Action select =
      commanding("selectSlot", "Switch set", menuCommand(0.15), "[log] Switched to set 3",
                 [](World& world) { world.model().selectSlot(3); });
  select.oldMenu = {"[log] Switched to set 2"};
  Action toggle =
      commanding("toggleMode", "Toggle mode", menuCommand(0.4), "[log] Now in advanced mode",
                 [](World& world) { world.model().toggleMode(); });
  toggle.oldMenu = {"[log] Now in standard mode"};
  return {reading("refresh", "Read the tuning menu", &AppModel::refresh),
          reading("readEverything", "Read", &AppModel::readEverything), select, toggle,
          commanding("factoryReset", "Factory reset", menuCommand(0.4),
                     "[log] Tuning menu reset to factory defaults",
                     [](World& world) { world.model().factoryReset(); })};
}

Action saving() {
  Action save;
  save.name = "saveStaged";
  save.run = [](World& world) { world.model().saveStaged(); };
  save.dialogue = threeWrites();
  save.lines = [](const Errors& errors) {
    const Lines texts = rejections(errors);
    const std::string outcome = texts.empty()
                                    ? "[log] Saved 3 changes to set C (Custom)"
                                    : fmt::format("[error] Saved {} of 3; the base rejected {}",
                                                  3 - texts.size(), fmt::join(texts, "; "));
    return Lines{"[log] Saving 3 changes\u2026", outcome};
  };
  save.withoutBase = absentStatus;
  save.staged = threeEdits;
  save.stagedAfter = [](const Errors& errors) {
    const Lines edits{"SEN=800", "FF=80", "NIN=9"};
    Lines failed;
    for (std::size_t part = 0; part < errors.size(); ++part) {
      if (errors[part]) failed.push_back(edits[part]);
    }
    return fmt::format("{}", fmt::join(failed, " "));
  };
  return save;
}

Action savingOne() {
  Action save = saving();
  save.name = "trySaving";
  save.run = [](World& world) { world.model().trySaving(P::forceFeedback); };
  save.dialogue = {meantWrite("FF", "65")};
  save.lines = [](const Errors& errors) {
    const std::string outcome =
        errors.front() ? "[error] Saved 0 of 1; the base rejected FF: " + *errors.front()
                       : "[log] Saved 1 change to set C (Custom)";
    return Lines{"[log] Saving 1 change\u2026", outcome};
  };
  save.staged = "FF=80";
  save.stagedAfter = [](const Errors& errors) { return errors.front() ? "FF=80" : ""; };
  return save;
}

Action applying() {
  Action apply;
  apply.name = "apply";
  apply.run = [](World& world) {
    world.model().apply(
        testPreset({{P::sensitivity, 800}, {P::forceFeedback, 80}, {P::naturalInertia, 9}}));
  };
  apply.dialogue = threeWrites();
  apply.lines = [](const Errors& errors) {
    const Lines texts = rejections(errors);
    if (texts.empty()) return Lines{"[log] Applied \"Test\" (3 values)"};
    return Lines{fmt::format("[log] Applied \"Test\" with {} failures: {}", texts.size(),
                             fmt::join(texts, "; "))};
  };
  apply.withoutBase = notConnectedLine;
  return apply;
}

Action resetting() {
  Action reset;
  reset.name = "usbReset";
  reset.run = [](World& world) { world.resetUSB(); };
  reset.lines =
      always({disconnectedLine, "[log] USB reset issued; the base will reconnect in a few seconds",
              connectedLine});
  reset.withoutBase = {
      "[error] USB reset failed: HID I/O failed: no USB device with vendor 0xeb7 found"};
  reset.stagedAfter = nothingStaged();
  reset.refused = [](const Refusal& refusal) {
    return fmt::format("[error] USB reset failed: /dev/bus/usb/001/002: {}",
                       std::generic_category().message(refusal.error));
  };
  return reset;
}

Action examining() {
  Action examine;
  examine.name = "examine";
  examine.run = [](World& world) { world.model().examine(); };
  examine.dialogue = {identityRead(), menuRead()};
  examine.lines = [](const Errors& errors) {
    Lines failed;
    if (errors[0]) failed.emplace_back("[check] Identity failed");
    if (errors[1]) failed.emplace_back("[check] Tuning menu failed");
    return failed.empty() ? Lines{"[check] nothing failed"} : failed;
  };
  examine.withoutBase = {"[check] Wheel base attached failed"};
  examine.before = Action::Before::refused;
  examine.isOpening = true;
  examine.staged = "";
  examine.refused = [](const Refusal& refusal) {
    return refusal.code == HIDReturnCode::notPermitted ? "[check] Permission failed"
                                                       : "[check] Other programs failed";
  };
  examine.waitsInVain = true;
  return examine;
}

// An action that sends nothing.
Action staging(std::string name, std::function<void(World&)> run, Lines lines, std::string after) {
  Action action;
  action.name = std::move(name);
  action.run = std::move(run);
  action.lines = always(std::move(lines));
  action.withoutBase = absentStatus;
  action.stagedAfter = [after = std::move(after)](const Errors&) { return after; };
  return action;
}

std::vector<Action> edits() {
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
          "discardStaged", [](World& world) { world.model().discardStaged(); },
          {"[log] Discarded 1 unsaved change"}, "")};
}

// Nothing was written before, so there is nothing to send.
std::vector<Action> reversals() {
  Action undo = staging(
      "undo", [](World& world) { world.model().undo(); }, {"[log] Nothing to undo"}, "SHO=50");
  Action redo = staging(
      "redo", [](World& world) { world.model().redo(); }, {"[log] Nothing to redo"}, "SHO=50");
  undo.withoutBase = redo.withoutBase = notConnectedLine;
  return {undo, redo};
}

std::string couldNotSavePresets(const std::string& reason) {
  return "[error] Could not save presets: presets.json: " + reason;
}

std::vector<Action> presetChanges() {
  Action capture;
  capture.name = "saveCurrentAsPreset";
  capture.run = [](World& world) { world.model().saveCurrentAsPreset("New"); };
  capture.lines = always({"[log] Saved preset \"New\""});
  capture.withoutBase = absentStatus;
  capture.unwritten = [](const std::string& reason) {
    return Lines{couldNotSavePresets(reason), "[log] Saved preset \"New\""};
  };
  capture.presets = capture.presetsInFile = "Own New";

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

  const auto loggedThenUnwritten = [](const std::string& line) {
    return [line](const std::string& reason) { return Lines{line, couldNotSavePresets(reason)}; };
  };

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

  Action replace;
  replace.name = "replacePreset";
  replace.run = [](World& world) {
    world.model().replacePreset(world.model().userPresets().front());
  };
  const std::string replaced = R"([log] Replaced the values of preset "Own")";
  replace.lines = always({replaced});
  replace.withoutBase = absentStatus;
  replace.unwritten = loggedThenUnwritten(replaced);

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

  Action import;
  import.name = "importSettings";
  import.run = [](World & world) { world.model().importSettings(world.directory_ / sharedFile);
};
import.lines = always({"[log] Imported \"Shared\" from shared.quorvane"});
import.withoutBase = {"[log] Imported \"Shared\" from shared.quorvane; connect a base to apply it"};
import.unwritten = [](const std::string& reason) {
  return Lines{"[log] Imported \"Shared\" from shared.quorvane", couldNotSavePresets(reason)};
};  // namespace
import.presets = import.presetsInFile = "Own Shared";

Action choose = import;
choose.name = "importSettingsFile";
choose.run = [](World& world) {
  world.panels_.answerAtOnce(world.directory_ / sharedFile);
  world.model().importSettingsFile();
};

Action all = import;
all.name = "importAll";
all.run = [](World& world) { world.model().importAll({world.directory_ / sharedFile}); };
return {capture, remove, undo, import, all, choose, edit, replace, duplicate, move};
}  // namespace quorvane

Action exporting(std::string name, void (AppModel::*write)(), const std::string& success,
                 const std::string& failure) {
  Action action;
  action.name = std::move(name);
  action.run = [write](World& world) {
    world.panels_.answerAtOnce(world.directory_ / writtenFile);
    (world.model().*write)();
  };
  action.lines = always({success});
  action.withoutBase = {success};
  action.unwritten = [failure](const std::string& reason) {
    return Lines{failure + "written: " + reason};
  };
  action.writesFile = true;
  return action;
}

std::vector<Action> exports() {
  const std::string failed = "[error] Export failed: ";
  Action share = exporting("shareCurrentSettings", &AppModel::shareCurrentSettings,
                           "[log] Exported settings to written", failed);
  share.withoutBase = absentStatus;
  Action report = exporting("saveReport", &AppModel::saveReport,
                            "[log] Saved the report to written. Look it over before you send it.",
                            "[error] Could not save the report: ");
  report.before = Action::Before::refused;
  report.staged = "";
  report.prepare = [](World& world) {
    world.model().examine();
    world.settle();
  };
  return {share,
          exporting("exportPresets", &AppModel::exportPresets, "[log] Exported 1 preset to written",
                    failed),
          report};
}

}  // namespace

Lines Action::linesFor(const Disturbance& disturbance) const {
  if (disturbance.tellsOldMenus && !oldMenu.empty()) return oldMenu;
  return lines(predict(dialogue, disturbance).errors);
}

std::string Action::stagedFor(const Disturbance& disturbance) const {
  return stagedAfter ? stagedAfter(predict(dialogue, disturbance).errors) : staged;
}

const std::vector<Action>& actions() {
  static const std::vector<Action> all = [] {
    std::vector<Action> list;
    for (const auto& some :
         {connecting(), exchanges(),
          std::vector{saving(), savingOne(), applying(), resetting(), examining()}, reversals(),
          edits(), presetChanges(), exports()}) {
      list.insert(list.end(), some.begin(), some.end());
    }
    return list;
  }();
  return all;
}

}  // namespace quorvane
