#pragma once

#include <string_view>

#include "protocol/tuning_parameter.h"

namespace quorvane {

// What a setting does, in plain words. Whole sentences in UTF-8, without line feeds. What is known
// by feel only says "drivers report".
struct SettingHelp {
  TuningParameter::Case parameter = TuningParameter::slot;
  std::string_view what;       // what it does
  std::string_view feel;       // what less and more of it feel like
  std::string_view worksWith;  // codes and other things, with commas: "FOR, strength in the game"
};

// To explain a setting, add a row to the table in setting_help.cpp.
const SettingHelp& helpOf(TuningParameter parameter);

}  // namespace quorvane
