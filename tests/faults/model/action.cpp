#include "tests/faults/model/action.h"

#include "tests/faults/model/action_lists.h"

namespace quorvane {

Lines Action::linesFor(const Disturbance& disturbance) const {
  if (disturbance.tellsOldMenus && !oldMenu.empty()) return oldMenu;
  return lines(predict(dialogue, disturbance).errors);
}

std::string Action::stagedFor(const Disturbance& disturbance) const {
  return stagedAfter ? stagedAfter(predict(dialogue, disturbance).errors) : staged;
}

const std::vector<Action>& actions() {
  static const std::vector<Action> all = [] {
    std::vector<Action> list;
    for (const auto& some :
         {connectingActions(), readingActions(), writeActions(), recoveringActions(),
          reversingActions(), stagingActions(), presetActions(), fileActions(), lookingActions()}) {
      list.insert(list.end(), some.begin(), some.end());
    }
    return list;
  }();
  return all;
}

}  // namespace quorvane
