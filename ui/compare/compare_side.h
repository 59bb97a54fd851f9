#pragma once

#include <QString>
#include <optional>
#include <string>
#include <vector>

#include "history/history_record.h"
#include "presets/tuning_preset.h"

namespace quorvane {

// One side of a comparison in the window. A value type.
struct CompareSide {
  enum class Kind {
    base,    // what the base has now; `name` and `values` are those when it was shown last
    preset,  // a built-in preset or the user's; likewise
    fixed    // a preset of a file, a menu from the history, a text
  };

  Kind kind = Kind::base;
  QString name;
  std::optional<UUID> id;  // of the preset, also of one in a file, or of the history's record
  TuningPreset::Values values;
  std::vector<std::string> notUnderstood;  // the rest of a text

  static CompareSide base() { return {}; }
  static CompareSide ofPreset(const TuningPreset& preset);
  static CompareSide ofFile(const TuningPreset& preset);

  // What was pasted: a text with its rest, or one preset of a settings file.
  static CompareSide ofPasted(const TuningPreset& preset, std::vector<std::string> notUnderstood);

  // The menu before a write of the history, "Before 14:02 (save)", or after it. None if the record
  // does not have it.
  static std::optional<CompareSide> before(const HistoryRecord& record);
  static std::optional<CompareSide> after(const HistoryRecord& record);

  // Whether both are the same side, also with other values meanwhile. Of pasted texts only the
  // content counts.
  bool isSideOf(const CompareSide& other) const;
};

}  // namespace quorvane
