#pragma once

namespace quorvane {

// RAII guard around the construction of the QApplication. If Qt finds no display or cannot use the
// requested platform, the program ends with EXIT_FAILURE and one line on standard error, instead of
// Qt's abort. Other Qt messages are held and printed by the destructor. Main thread, one instance
// at a time.
class DisplayFailure {
 public:
  DisplayFailure();
  ~DisplayFailure();
  DisplayFailure(const DisplayFailure&) = delete;
  DisplayFailure& operator=(const DisplayFailure&) = delete;
};

}  // namespace quorvane
