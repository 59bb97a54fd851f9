#pragma once

#include <QSocketNotifier>
#include <functional>
#include <string>

namespace quorvane {

// Calls a handler for each line of standard input, on the main thread's event loop. End of input
// quits the application.
class LineInput {
 public:
  using Handler = std::function<void(const std::string& line)>;

  explicit LineInput(Handler handler);

 private:
  void take();

  const Handler handler_;
  QSocketNotifier notifier_;
  std::string pending_;
};

}  // namespace quorvane
