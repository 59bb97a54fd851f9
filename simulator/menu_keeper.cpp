#include "simulator/menu_keeper.h"

#include <stdexcept>
#include <utility>

#include "simulator/simulated_device.h"

namespace quorvane {
namespace {

bool isTuningCommand(ByteView packet) {
  return packet.size() > 2 && packet[0] == FanatecCommands::tuningReportID &&
         packet[1] == FanatecCommands::tuningGroup;
}

bool isWholeMenu(ByteView packet) { return packet[2] == FanatecCommands::writeCommand; }

}  // namespace

MenuKeeper::MenuKeeper(SimulatedDevice& device, std::unique_ptr<MenuStorage> storage,
                       Complain complain)
    : device_(device), complain_(std::move(complain)), storage_(std::move(storage)) {
  MutexLock held(lock_);
  takeOver();
}

HIDReturn MenuKeeper::send(ByteView packet, const std::function<HIDReturn()>& send) {
  if (!isTuningCommand(packet)) return send();
  MutexLock held(lock_);
  try {
    if (!isWholeMenu(packet)) takeOver();
    const SimulatedMenu::State before = menu();
    const HIDReturn code = send();
    keep(before);
    return code;
  } catch (const std::runtime_error& error) {  // FileError, DecodingError
    complain_(error.what());
    return HIDReturnCode::generalError;
  }
}

void MenuKeeper::takeOver() {
  if (const auto kept = storage_->read()) restore(*kept);
}

// Stores the change since `before`. If that fails, undoes it on the base and rethrows.
void MenuKeeper::keep(const SimulatedMenu::State& before) {
  const SimulatedMenu::State after = menu();
  if (after == before) return;
  try {
    restore(storage_->change(before, after));
  } catch (const std::runtime_error&) {
    restore(before);
    throw;
  }
}

SimulatedMenu::State MenuKeeper::menu() const {
  SimulatedMenu::State state;
  device_.withBase([&](SimulatedBase& base) { state = base.menu().state(); });
  return state;
}

void MenuKeeper::restore(const SimulatedMenu::State& state) const {
  device_.withBase([&](SimulatedBase& base) { base.menu().restore(state); });
}

}  // namespace quorvane
