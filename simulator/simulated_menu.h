#pragma once

#include <array>
#include <cstdint>

#include "protocol/commands.h"
#include "protocol/setting.h"
#include "protocol/tuning_parameter.h"
#include "support/bytes.h"

namespace quorvane {

// The tuning menu as a base keeps it: five sets of bytes, the active one, and the mode.
class SimulatedMenu {
 public:
  static constexpr int setCount = static_cast<int>(tuningSets.upper);
  static constexpr std::size_t menuOffset = 3;
  using Menu = std::array<std::uint8_t, TuningSnapshot::length - menuOffset>;

  // All that the menu keeps: the bytes of each set from offset 3 of its tuning report.
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

  // Whether the state is one that a base of this product can come to by its own commands.
  bool canHave(const State& state) const;

  // Takes a state that it can have.
  void restore(const State& state);

  // The tuning report of the active set: 64 bytes, report ID first.
  Bytes report() const;

  // Sets outside 1...5 are left alone, as the hardware does.
  void select(int set);
  void saveInto(int set);
  void toggleMode() { state_.isAdvanced = !state_.isAdvanced; }
  void reset();

  // Takes the menu bytes of a write (offset 3 onward of the tuning report). A byte that is outside
  // its parameter's range, or whose parameter this product lacks, keeps its value.
  void write(ByteView menu);

  // One parameter of the active set in display units, which must be valid for the product.
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
