#pragma once

#include "ui/kit/metrics.h"

// Sizes and texts of a row of the tuning list. Its parts from left to right: change bar, code
// plate, title, control, readout, state, revert button.
namespace quorvane::RowLayout {

inline constexpr int changeBar = 3;
inline constexpr int roomyHeight = 48;
inline constexpr int plateWidth = 38;
inline constexpr int plateHeight = 18;
inline constexpr int plateGap = 12;
inline constexpr int revertSize = 28;
inline constexpr int pillPadding = 7;
inline constexpr int widestControl = 760;
inline constexpr int sliderMargin = 9;  // between a slider's track and the edge of its widget

// The widths of the columns in a wide and in a narrow window.
struct Columns {
  int inset;
  int title;
  int readout;
  int state;
  int gap;
};
inline constexpr Columns usual{Metrics::pageInset, 196, 118, 160, 14};
inline constexpr Columns narrow{Metrics::narrowInset, 174, 114, 86, 10};

inline constexpr const char* changed = "Changed";
inline constexpr const char* notice = "changed on the base";

}  // namespace quorvane::RowLayout
