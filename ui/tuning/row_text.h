#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "protocol/product.h"
#include "protocol/tuning_parameter.h"

// What a row of the tuning list shows and says, as text.
namespace quorvane {

// What a row is about. Values in display units.
struct RowState {
  TuningParameter parameter = TuningParameter::slot;
  std::int64_t current = 0;            // on the base
  std::optional<std::int64_t> staged;  // not on the base yet
  std::optional<FanatecProduct> product;

  std::int64_t shown() const { return staged.value_or(current); }

  // The shown steering angle is the automatic one.
  bool isAuto() const;

  // The shown value has a switch of its own ("AUTO", "OFF") and that is on.
  bool isSpecial() const;

  bool operator==(const RowState&) const = default;
};

// The value as the row shows it: "80 %", "900 deg", "AUT", "PEA".
std::string format(const RowState& row, std::int64_t value);

// A value on the slider that stands for this one: itself where it is ordinary.
std::int64_t ordinaryValue(const RowState& row, std::int64_t value,
                           std::optional<std::int64_t> lastOrdinary);

// What a screen reader says of the row's control: title, shown value, and the old one.
std::string spokenName(const RowState& row);

}  // namespace quorvane
