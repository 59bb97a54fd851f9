#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "protocol/product.h"
#include "protocol/tuning_parameter.h"

namespace quorvane {

// The tuning sets that a base keeps, by number.
inline constexpr ClosedRange tuningSets{1, 5};
inline constexpr int autoSet = 1;    // in the standard menu; the base chooses its values
inline constexpr int customSet = 2;  // in the standard menu

// How a setting's byte encodes its display value.
enum class Coding {
  plain,         // the value
  tenths,        // a tenth of the value
  flooredToTen,  // the value, rounded down to a multiple of ten when written
  signedByte,    // the value in two's complement
  steeringAngle  // a tenth of the value, or the wrapped byte of direct-drive bases
};

// The control that edits a setting.
enum class Editor { slider, segments, list };

// The name of a value that is not shown as a number.
struct ValueLabel {
  std::string_view text;    // for TuningParameter::label(); the base displays the first word
  std::string_view choice;  // in the editor
};

// The labels of a setting's values, in order from the lowest value of its range.
struct ValueLabels {
  std::span<const ValueLabel> labels;
  bool isLastForOthers = false;  // whether values outside the range have the last label
};

// A value that means a state instead of an amount. The window has a switch for it next to the
// slider.
struct SpecialValue {
  std::int64_t value;           // what is written for it
  std::string_view word;        // on the base's display
  std::string_view switchWord;  // next to the switch, in presets and on command lines
  // The value that the product's menu reports for it; 0 for products without it. Null: `value`.
  std::int64_t FanatecProduct::*shownAs = nullptr;
  std::string_view whyMissing = {};  // the switch's help text on products without it
};

// All facts about one setting. To add a setting, add a row to the table in
// setting.cpp and a case to TuningParameter.
struct SettingInfo {
  TuningParameter::Case parameter = TuningParameter::slot;
  std::string_view code;
  std::string_view title;
  std::string_view unit;
  ClosedRange range;  // without a product
  std::int64_t step = 1;
  std::size_t offset = 0;  // see TuningParameter::offset()
  Coding coding = Coding::plain;
  unsigned menus = 0;        // bits of MenuKind
  std::int64_t factory = 0;  // the factory default
  Editor editor = Editor::slider;
  // The member with the product's upper end of the range; null if it is the same for all products.
  std::int64_t FanatecProduct::*highest = nullptr;
  std::optional<SpecialValue> special = std::nullopt;
  ValueLabels valueLabels = {};
};

const SettingInfo& settingOf(TuningParameter parameter);

}  // namespace quorvane
