#include "tests/windowless/line_input.h"

#include <unistd.h>

#include <QCoreApplication>
#include <array>
#include <utility>

namespace quorvane {

LineInput::LineInput(Handler handler)
    : handler_(std::move(handler)), notifier_(STDIN_FILENO, QSocketNotifier::Read) {
  QObject::connect(&notifier_, &QSocketNotifier::activated, [this] { take(); });
}

void LineInput::take() {
  std::array<char, 4096> block{};
  const ssize_t length = ::read(STDIN_FILENO, block.data(), block.size());
  if (length <= 0) {
    notifier_.setEnabled(false);
    QCoreApplication::quit();
    return;
  }
  pending_.append(block.data(), static_cast<std::size_t>(length));
  for (std::size_t end = pending_.find('\n'); end != std::string::npos; end = pending_.find('\n')) {
    const std::string line = pending_.substr(0, end);
    pending_.erase(0, end + 1);
    handler_(line);
  }
}

}  // namespace quorvane
