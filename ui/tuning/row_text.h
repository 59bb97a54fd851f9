#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "app/outcome.h"
#include "protocol/product.h"
#include "protocol/tuning_parameter.h"

// Texts of a row of the tuning list.
namespace quorvane {

// The state of a row. Values in display units.
struct RowState {
  TuningParameter parameter = TuningParameter::slot;
  std::int64_t current = 0;            // on the base
  std::optional<std::int64_t> staged;  // not on the base yet
  std::optional<FanatecProduct> product;
  std::optional<Outcome> outcome = std::nullopt;

  std::int64_t shown() const { return staged.value_or(current); }

  // Whether the row shows the automatic steering angle.
  bool isAuto() const;

  // Whether the row has a switch for a special value ("AUTO", "OFF") and it is on.
  bool isSpecial() const;

  // Whether the staged value was not taken by the base, or not part of a preset that was applied.
  bool isNotTaken() const { return staged && outcome == Outcome::notTaken; }
  bool isLeftUnsaved() const { return staged && outcome == Outcome::leftUnsaved; }

  bool operator==(const RowState&) const = default;
};

// The value as the row shows it: "80 %", "900 deg", "AUT", "PEA".
std::string format(const RowState& row, std::int64_t value);

// The slider's position for a value: the value itself if it is in range; for a special value the
// current one, else the last one in range, else the upper limit.
std::int64_t ordinaryValue(const RowState& row, std::int64_t value,
                           std::optional<std::int64_t> lastOrdinary);

// The value of the parameter whose text is the longest.
std::string longestFormat(const RowState& row);

// What became of the staged value, below the title: "Not taken · still 50 %". Empty for none.
std::string noteOf(const RowState& row);

// The accessible name of the row and its control: title, shown value, the old value if changed, and
// what became of the staged one.
std::string spokenName(const RowState& row);

}  // namespace quorvane
