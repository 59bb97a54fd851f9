#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "protocol/product.h"
#include "protocol/tuning_parameter.h"

// What a row of the tuning list shows and says, as text.
namespace quorvane {

// The set that the base fills in by itself, in the standard menu.
inline constexpr int autoSet = 1;

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

// The parameters that have a row: the product's menu without the set's number, which is chosen
// elsewhere.
std::vector<TuningParameter> listedParameters(const std::optional<FanatecProduct>& product);

// The value as the row shows it: "80 %", "900 deg", "AUT", "PEA".
std::string format(const RowState& row, std::int64_t value);

// The same in two parts: the number or word, and the unit ("%", "deg", or nothing).
std::string valueWord(const RowState& row, std::int64_t value);
std::string unitOf(TuningParameter parameter);

// The word beside the switch of a parameter that has one; empty for the others.
std::string switchWord(TuningParameter parameter);

// The value that the switch stages when it is turned on, and whether this base takes it.
std::int64_t specialValue(TuningParameter parameter);
bool hasSpecialValue(TuningParameter parameter, const std::optional<FanatecProduct>& product);

// The values that a slider covers; the special one is not among them.
ClosedRange sliderRange(TuningParameter parameter, const std::optional<FanatecProduct>& product);

// A value on the slider that stands for this one: itself where it is ordinary.
std::int64_t ordinaryValue(const RowState& row, std::int64_t value,
                           std::optional<std::int64_t> lastOrdinary);

// What a screen reader says of the row's control: title, shown value, and the old one.
std::string spokenName(const RowState& row);

// "0 to 100 %, step 10".
std::string rangeText(TuningParameter parameter, const std::optional<FanatecProduct>& product);

}  // namespace quorvane
