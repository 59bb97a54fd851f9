#pragma once

#include <array>
#include <cstdint>

#include "protocol/commands.h"
#include "protocol/setting.h"
#include "protocol/tuning_parameter.h"
#include "support/bytes.h"

namespace quorvane {

// The tuning menu in the base: five sets of bytes, the number of the active one, and the mode.
class SimulatedMenu {
 public:
  static constexpr int setCount = static_cast<int>(tuningSets.upper);
  static constexpr std::size_t menuOffset = 3;
  using Menu = std::array<std::uint8_t, TuningSnapshot::length - menuOffset>;

  // The whole menu. A set is the bytes from offset 3 of its tuning report.
  struct State {
    std::array<Menu, setCount> sets{};
    int activeSet = 1;
    bool isAdvanced = false;

    bool operator==(const State&) const = default;
  };

  explicit SimulatedMenu(const FanatecProduct& product);

  int activeSet() const { return state_.activeSet; }
  bool isAdvanced() const { return state_.isAdvanced; }

  const State& state() const { return state_; }

  // Whether commands can bring a base of this product into this state: all values are in range, and
  // bytes that belong to no parameter are 0.
  bool canHave(const State& state) const;

  // Replaces the state. Precondition: canHave(state).
  void restore(const State& state);

  // The tuning report of the active set: 64 bytes, report ID first.
  Bytes report() const;

  // A set number outside 1...5 has no effect, as on the hardware.
  void select(int set);
  void saveInto(int set);
  void toggleMode() { state_.isAdvanced = !state_.isAdvanced; }
  void reset();

  // What losing power does: set A, which games control, has its factory values again.
  void boot();

  // Writes menu bytes (offset 3 onward of the tuning report) to the active set. Ignores a byte that
  // is outside its parameter's range or whose parameter this product lacks.
  void write(ByteView menu);

  // Sets one parameter of the active set, in display units. The value must be valid for the
  // product.
  void put(TuningParameter parameter, std::int64_t value);

 private:
  Menu factoryMenu() const;
  Menu& active() { return state_.sets[static_cast<std::size_t>(state_.activeSet - 1)]; }
  std::uint8_t& byte(Menu& menu, TuningParameter parameter) const;
  bool accepts(TuningParameter parameter, std::uint8_t raw) const;
  bool canHave(const Menu& menu) const;

  FanatecProduct product_;
  State state_;
};

}  // namespace quorvane
