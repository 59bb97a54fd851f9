#include "simulator/simulated_menu.h"

#include <algorithm>

#include "protocol/error.h"
#include "support/invariant.h"

namespace quorvane {
namespace {

constexpr std::uint8_t standardModeBit = 0x80;

}  // namespace

SimulatedMenu::SimulatedMenu(const FanatecProduct& product) : product_(product) {
  invariant(product.hasTuningMenu(), "a simulated base needs a product with a tuning menu");
  reset();
}

Bytes SimulatedMenu::report() const {
  const auto mode = state_.isAdvanced ? std::uint8_t{0} : standardModeBit;
  Bytes bytes{TuningSnapshot::reportID, TuningSnapshot::subID,
              static_cast<std::uint8_t>(state_.activeSet | mode)};
  const Menu& menu = state_.sets[static_cast<std::size_t>(state_.activeSet - 1)];
  bytes.insert(bytes.end(), menu.begin(), menu.end());
  return bytes;
}

void SimulatedMenu::select(int set) {
  if (set >= 1 && set <= setCount) state_.activeSet = set;
}

void SimulatedMenu::saveInto(int set) {
  if (set >= 1 && set <= setCount) state_.sets[static_cast<std::size_t>(set - 1)] = active();
}

void SimulatedMenu::reset() {
  state_ = {};
  state_.sets.fill(factoryMenu());
}

void SimulatedMenu::boot() { state_.sets.front() = factoryMenu(); }

bool SimulatedMenu::canHave(const State& state) const {
  return state.activeSet >= 1 && state.activeSet <= setCount &&
         std::all_of(state.sets.begin(), state.sets.end(),
                     [this](const Menu& menu) { return canHave(menu); });
}

void SimulatedMenu::restore(const State& state) {
  invariant(canHave(state), "a simulated base gets a menu of its own product");
  state_ = state;
}

void SimulatedMenu::write(ByteView menu) {
  for (const TuningParameter parameter : TuningParameter::adjustable(product_)) {
    const std::size_t index = parameter.offset() - menuOffset;
    if (index < menu.size() && accepts(parameter, menu[index])) {
      byte(active(), parameter) = menu[index];
    }
  }
}

void SimulatedMenu::put(TuningParameter parameter, std::int64_t value) {
  byte(active(), parameter) = parameter.encode(value, product_);
}

SimulatedMenu::Menu SimulatedMenu::factoryMenu() const {
  Menu menu{};
  for (const TuningParameter parameter : TuningParameter::adjustable(product_)) {
    const std::int64_t factory = settingOf(parameter).factory;
    const bool isMissing =
        parameter.isSpecial(factory, product_) && !parameter.hasSpecial(product_);
    const std::int64_t value = isMissing ? parameter.allowedRange(product_).upper : factory;
    byte(menu, parameter) = parameter.encode(value, product_);
  }
  return menu;
}

std::uint8_t& SimulatedMenu::byte(Menu& menu, TuningParameter parameter) const {
  return menu[parameter.offset() - menuOffset];
}

// Bytes that belong to no parameter are never written.
bool SimulatedMenu::canHave(const Menu& menu) const {
  Menu others = menu;
  for (const TuningParameter parameter : TuningParameter::adjustable(product_)) {
    const std::size_t index = parameter.offset() - menuOffset;
    if (!accepts(parameter, menu[index])) return false;
    others[index] = 0;
  }
  return others == Menu{};
}

bool SimulatedMenu::accepts(TuningParameter parameter, std::uint8_t raw) const {
  const std::int64_t value = parameter.decode(raw, product_);
  if (parameter.allowedRange(product_).contains(value)) return true;
  const auto& special = settingOf(parameter).special;
  return special && parameter.label(value, product_) == special->word;
}

}  // namespace quorvane
