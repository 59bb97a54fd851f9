#pragma once

#include <array>
#include <cstdint>

#include "protocol/commands.h"
#include "protocol/tuning_parameter.h"
#include "support/bytes.h"

namespace quorvane {

// The tuning menu as a base keeps it: five sets of bytes, the active one, and the mode.
class SimulatedMenu {
 public:
  static constexpr int setCount = 5;

  explicit SimulatedMenu(const FanatecProduct& product);

  int activeSet() const { return activeSet_; }
  bool isAdvanced() const { return advanced_; }

  // The tuning report of the active set: 64 bytes, report ID first.
  Bytes report() const;

  // Sets outside 1...5 are left alone, as the hardware does.
  void select(int set);
  void saveInto(int set);
  void toggleMode() { advanced_ = !advanced_; }
  void reset();

  // Takes the menu bytes of a write (offset 3 onward of the tuning report). A byte that is outside
  // its parameter's range, or whose parameter this product lacks, keeps its value.
  void write(ByteView menu);

  // One parameter of the active set in display units, which must be valid for the product.
  void put(TuningParameter parameter, std::int64_t value);

 private:
  static constexpr std::size_t menuOffset = 3;
  using Menu = std::array<std::uint8_t, TuningSnapshot::length - menuOffset>;

  Menu factoryMenu() const;
  Menu& active() { return sets_[static_cast<std::size_t>(activeSet_ - 1)]; }
  std::uint8_t& byte(Menu& menu, TuningParameter parameter) const;
  bool accepts(TuningParameter parameter, std::uint8_t raw) const;

  FanatecProduct product_;
  std::array<Menu, setCount> sets_{};
  int activeSet_ = 1;
  bool advanced_ = false;
};

}  // namespace quorvane
