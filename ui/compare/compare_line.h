#pragma once

#include <QString>
#include <optional>

#include "presets/comparison_text.h"
#include "presets/settings_comparison.h"

namespace quorvane {

// A value of a row: "65" and "%", "AUTO", or a dot for none.
struct CompareValue {
  QString number;
  QString unit;

  bool operator==(const CompareValue&) const = default;
};

// What a row of the comparison shows.
struct CompareLine {
  // From the left value to the right one; places in the setting's range, 0 to 1.
  struct Distance {
    double from = 0;
    double to = 0;

    bool operator==(const Distance&) const = default;
  };

  QString code;
  QString title;
  CompareValue left;
  CompareValue right;
  QString number;  // the signed change; empty for words and where nothing changes
  QString words;   // in place of number and distance: "same", "automatic angle", "only on the base"
  std::optional<Distance> distance;
  bool isDifferent = false;  // drawn strong
  bool isStronger = false;   // pulls much harder
  bool isTickable = false;   // the right value can be filled in
  bool isTicked = false;

  bool operator==(const CompareLine&) const = default;

  // "FF, Force feedback strength, 65 %, 100 %, +35, stronger".
  QString spoken() const;
};

// All but the tick.
CompareLine compareLine(const ComparedRow& row, const SettingsComparison& comparison,
                        const std::optional<FanatecProduct>& product, const OneSidedWords& words);

}  // namespace quorvane
