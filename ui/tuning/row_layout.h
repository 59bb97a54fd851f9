#pragma once

#include <QRect>
#include <QSize>
#include <QString>

// Sizes, columns and texts of a row of the tuning list. Its parts in one line, from left to right:
// change bar, code plate, title, control, readout, state, button.
namespace quorvane::RowLayout {

inline constexpr int changeBar = 3;
inline constexpr int roomyHeight = 48;
inline constexpr int pillPadding = 7;
inline constexpr int sliderMargin = 9;  // between a slider's track and the edge of its widget
inline constexpr int symbolGap = 4;     // between a symbol and its text

inline constexpr const char* changed = "Changed";

// The forms of the list, best first; all rows have the same one.
enum class Form {
  oneLine,
  stacked,  // the state below the title
  twoLines  // control and readout below title and state
};

// The widths that texts and controls of rows need, in the current font.
struct Needs {
  int title = 0;
  int note = 0;    // below the title: a value that was not taken
  int picker = 0;  // of a list or segments; 0: a slider
  int toggle = 0;  // beside a slider; 0: none
  int readout = 0;
  int state = 0;  // pill and old value

  // Grows to what both need.
  void include(const Needs& other);
};

// Columns that all rows share.
struct Columns {
  Form form = Form::oneLine;
  int inset = 0;
  int title = 0;
  int toggle = 0;
  int readout = 0;
  int state = 0;
  int height = 0;  // of a row

  bool operator==(const Columns&) const = default;
};

// The columns of the first form that fits rows of this width.
Columns columns(const Needs& needs, int width, int inset);

// The additional height of a row with a note.
int noteHeight(Form form);

// What a row shows besides its value.
struct Extras {
  int state = 0;  // width of the state; 0: none
  bool hasNote = false;
};

// The places of a row's parts, reckoned from left to right.
struct Places {
  QRect plate;
  QRect title;
  QRect control;  // the track of a slider, with its switch
  QRect readout;
  QRect button;
  QRect state;  // one line, or the full height in the form oneLine
  QRect note;
};
Places places(const Columns& columns, const QSize& row, const Extras& extras);

// The size of the plate with the code.
QSize plateSize();

// The height of a line of state: the pill, or its text.
int stateLine();

}  // namespace quorvane::RowLayout
