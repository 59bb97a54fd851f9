#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "presets/tuning_preset.h"
#include "protocol/product.h"

namespace quorvane {

// How the values of a setting compare. Exactly one applies, the last that does.
enum class ComparedState {
  same,        // both have the same byte on the base
  differs,     // both can be set, to different bytes
  onlyLeft,    // the right side leaves the setting alone
  onlyRight,   // the left side does
  outOfRange,  // a side has a value that the base cannot take
  notOnBase,   // the base's menu lacks the setting, or there is no setting with this code
};

// "same", "differs", "onlyLeft", "onlyRight", "outOfRange", "notOnBase".
std::string_view rawValue(ComparedState state);

// The values of one setting on both sides, in display units. A side may have none, but not both.
struct ComparedRow {
  std::string code;
  std::optional<TuningParameter> parameter;  // none: no setting has this code
  std::optional<std::int64_t> left;
  std::optional<std::int64_t> right;
  ComparedState state = ComparedState::same;

  std::string_view title() const;  // empty without a parameter

  // Right minus left, if the values differ and both are numbers in the range. None for words.
  std::optional<std::int64_t> change(const std::optional<FanatecProduct>& product) const;

  bool operator==(const ComparedRow&) const = default;
};

// Two lists of values, compared as the menu of one base shows and writes them.
class SettingsComparison {
 public:
  // Without a product, two values are the same if they are on every base, and out of range if they
  // are on every base. The set's number is not compared.
  SettingsComparison(const TuningPreset::Values& left, const TuningPreset::Values& right,
                     const std::optional<FanatecProduct>& product);

  // A row for each setting that a side has a value for, in menu order; other codes come last.
  const std::vector<ComparedRow>& rows() const { return rows_; }

  // The counts of all states add up to the number of rows.
  std::size_t count(ComparedState state) const { return counts_[static_cast<std::size_t>(state)]; }

  // Whether every row is the same.
  bool isSame() const { return count(ComparedState::same) == rows_.size(); }

  // See strengthRaised(), from the left side to the right one.
  std::optional<TuningParameter> stronger() const { return stronger_; }

 private:
  void add(ComparedRow row);

  std::vector<ComparedRow> rows_;
  std::array<std::size_t, 6> counts_{};
  std::optional<TuningParameter> stronger_;
};

// The setting that makes the wheel pull so much harder that it could hurt unprepared hands: FF, FOR
// or FUL raised by 25 or more, or FF times FOR by half. The one that is raised most; none if
// `wanted` does no such thing. Values that are out of range, and those that the menu lacks, do not
// count.
std::optional<TuningParameter> strengthRaised(const TuningPreset::Values& now,
                                              const TuningPreset::Values& wanted,
                                              const std::optional<FanatecProduct>& product);

}  // namespace quorvane
