#include "simulator/simulated_menu.h"

#include <algorithm>
#include <utility>

#include "protocol/error.h"
#include "support/invariant.h"

namespace quorvane {
namespace {

constexpr std::uint8_t standardModeBit = 0x80;

using Values = std::array<std::pair<TuningParameter, std::int64_t>, 17>;

// What a base ships with; 0 degrees is the automatic angle.
constexpr Values factoryValues{{
    {TuningParameter::sensitivity, 0},
    {TuningParameter::forceFeedback, 100},
    {TuningParameter::vibration, 100},
    {TuningParameter::brakeLevelIndicator, 101},
    {TuningParameter::forceFeedbackScaling, 1},
    {TuningParameter::driftMode, 0},
    {TuningParameter::forceEffect, 100},
    {TuningParameter::springEffect, 100},
    {TuningParameter::damperEffect, 100},
    {TuningParameter::naturalDamper, 50},
    {TuningParameter::naturalFriction, 0},
    {TuningParameter::brakeForce, 50},
    {TuningParameter::forceEffectIntensity, 100},
    {TuningParameter::analogPaddles, 1},
    {TuningParameter::interpolation, 11},
    {TuningParameter::naturalInertia, 0},
    {TuningParameter::fullForce, 0},
}};

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
  for (const TuningParameter parameter : TuningParameter::available(product_)) {
    if (parameter == TuningParameter::slot) continue;
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
  const auto available = TuningParameter::available(product_);
  const auto has = [&](TuningParameter parameter) {
    return std::find(available.begin(), available.end(), parameter) != available.end();
  };
  Menu menu{};
  for (const auto& [parameter, value] : factoryValues) {
    if (!has(parameter)) continue;
    const bool automatic = parameter == TuningParameter::sensitivity && value == 0;
    const std::int64_t settable =
        automatic && product_.autoRotation == 0 ? product_.maxRotation : value;
    byte(menu, parameter) = parameter.encode(settable, product_);
  }
  return menu;
}

std::uint8_t& SimulatedMenu::byte(Menu& menu, TuningParameter parameter) const {
  return menu[parameter.offset() - menuOffset];
}

// Bytes that belong to no parameter are never written.
bool SimulatedMenu::canHave(const Menu& menu) const {
  Menu others = menu;
  for (const TuningParameter parameter : TuningParameter::available(product_)) {
    if (parameter == TuningParameter::slot) continue;
    const std::size_t index = parameter.offset() - menuOffset;
    if (!accepts(parameter, menu[index])) return false;
    others[index] = 0;
  }
  return others == Menu{};
}

bool SimulatedMenu::accepts(TuningParameter parameter, std::uint8_t raw) const {
  const std::int64_t value = parameter.decode(raw, product_);
  if (parameter == TuningParameter::sensitivity && product_.autoRotation > 0 &&
      value == product_.autoRotation) {
    return true;
  }
  return parameter.allowedRange(product_).contains(value);
}

}  // namespace quorvane
