#pragma once

#include <array>
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
inline constexpr int autoSet = 1;    // of the standard menu, which the base fills in by itself
inline constexpr int customSet = 2;  // of the standard menu

// How a setting's byte relates to its display value.
enum class Coding {
  plain,         // the value
  tenths,        // a tenth of the value
  flooredToTen,  // the value, rounded down to a multiple of ten when written
  signedByte,    // the value as a two's-complement byte
  steeringAngle  // a tenth of the value, or the wrapped form of the direct-drive bases
};

// The control that edits a setting.
enum class Editor { slider, segments, list };

// What a value is called where it is not shown as a number.
struct ValueLabel {
  std::string_view text;    // of the setting's label(); its first word stands on the display
  std::string_view choice;  // among the choices of the editor
};

// The labels of a setting's values, from the lowest value of its range on.
struct ValueLabels {
  std::span<const ValueLabel> labels;
  bool isLastForOthers = false;  // values outside the range have the last label; else none
};

// A value that stands for a state instead of an amount. It has a switch beside the slider.
struct SpecialValue {
  std::int64_t value;           // what is written for it
  std::string_view word;        // on the base's display
  std::string_view switchWord;  // beside the switch, in presets and on command lines
  // The value that this product's menu shows for it, 0 for products that lack it. Null: `value`.
  std::int64_t FanatecProduct::*shownAs = nullptr;
  std::string_view whyMissing = {};  // the switch's help text on products that lack it
};

// Everything that is known about one setting. A new setting is a new row of `settings`, and a new
// case of TuningParameter.
struct SettingInfo {
  TuningParameter::Case parameter = TuningParameter::slot;
  std::string_view code;
  std::string_view title;
  std::string_view unit;
  ClosedRange range;  // without a product
  std::int64_t step = 1;
  std::size_t offset = 0;  // of its byte in the tuning report
  Coding coding = Coding::plain;
  unsigned menus = 0;        // bits of MenuKind
  std::int64_t factory = 0;  // the value that a base is shipped with
  Editor editor = Editor::slider;
  // The product's own upper end of the range, if products differ in it.
  std::int64_t FanatecProduct::*highest = nullptr;
  std::optional<SpecialValue> special = std::nullopt;
  ValueLabels valueLabels = {};
};

// Indexed by TuningParameter::Case.
const std::array<SettingInfo, TuningParameter::count>& settings();

const SettingInfo& settingOf(TuningParameter parameter);

}  // namespace quorvane
