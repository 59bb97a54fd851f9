#pragma once

#include <vector>

#include "tests/faults/model/action.h"

namespace quorvane {

std::vector<Action> connectingActions();  // opening and ending sessions
std::vector<Action> readingActions();     // and commands that answer with a menu
std::vector<Action> writeActions();
std::vector<Action> recoveringActions();  // the USB reset and the examination
std::vector<Action> reversingActions();   // undo and redo of a write in the history
std::vector<Action> stagingActions();
std::vector<Action> presetActions();
std::vector<Action> fileActions();     // of files that only the user names
std::vector<Action> lookingActions();  // read what is only looked at

}  // namespace quorvane
