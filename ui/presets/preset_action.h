#pragma once

namespace quorvane {

// What can be done with a preset in the list. Those from `edit` on need one of the user's own.
enum class PresetAction {
  load,
  apply,
  duplicate,
  copyText,
  edit,
  replace,
  remove,
  moveUp,
  moveDown,
};

// Where the keys move the focus, from one preset's row to another.
enum class PresetStep { up, down, first, last };

}  // namespace quorvane
