#include <fmt/format.h>

#include <utility>

#include "tests/faults/model/action_lists.h"
#include "tests/faults/model/action_texts.h"

namespace quorvane {
namespace {

Part identityRead() { return {{menuPacket, menuPacket, identityAnswer}, {}, {}}; }
Part menuRead() { return {{menuPacket, menuAnswer}, {}, {}, true}; }

Dialogue menuCommand(double seconds) {
  return {{{ownWriteLock, menuPacket, pauseOf(seconds), menuPacket, menuAnswer}, {}, {}, true}};
}

// The lines of an action that shows its title and the error when it fails.
std::function<Lines(const Action::Errors&)> titled(const std::string& title, const Lines& success) {
  return [=](const Action::Errors& errors) {
    if (!errors.front()) return success;
    return Lines{fmt::format("[error] {} failed: {}", title, *errors.front())};
  };
}

std::string couldNotOpen(const Refusal& refusal) {
  return fmt::format("[error] Could not open {}: HID I/O failed: {}", displayName,
                     describeHIDReturn(refusal.code));
}

Lines connectingLines(const Action::Errors& errors) {
  Lines lines{fmt::format("[log] Connected to {}", errors[0] ? displayName : baseName)};
  if (errors[1]) lines.emplace_back(noAnswerLine);
  return lines;
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
  examine.lines = [](const Action::Errors& errors) {
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

}  // namespace

std::vector<Action> connectingActions() {
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

std::vector<Action> readingActions() {
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

std::vector<Action> recoveringActions() { return {resetting(), examining()}; }

}  // namespace quorvane
