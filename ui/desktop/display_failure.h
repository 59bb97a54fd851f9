#pragma once

namespace quorvane {

// Stands around the making of the QApplication: where Qt finds no display, or cannot use the
// platform that it is told to use, the program then ends with EXIT_FAILURE after one line on
// standard error, in place of Qt's abort. What else Qt says meanwhile is passed on when this is
// destroyed. Main thread, one at a time.
class DisplayFailure {
 public:
  DisplayFailure();
  ~DisplayFailure();
  DisplayFailure(const DisplayFailure&) = delete;
  DisplayFailure& operator=(const DisplayFailure&) = delete;
};

}  // namespace quorvane
