#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <array>
#include <csignal>
#include <optional>

#include "support/unique_fd.h"

namespace quorvane {

// Turns SIGTERM, SIGINT and SIGHUP into an event of the main thread, while it exists. One exists at
// a time. The second signal of a kind ends the process at once, as without it. A signal that the
// process was started to ignore stays ignored.
class TerminationSignals final : public QObject {
  Q_OBJECT

 public:
  TerminationSignals();
  ~TerminationSignals() override;
  TerminationSignals(const TerminationSignals&) = delete;
  TerminationSignals& operator=(const TerminationSignals&) = delete;

 signals:
  void received();

 private:
  static constexpr std::array kinds{SIGTERM, SIGINT, SIGHUP};

  void take();

  UniqueFd readEnd_;
  UniqueFd writeEnd_;
  std::optional<QSocketNotifier> notifier_;
  std::array<struct sigaction, kinds.size()> before_{};
};

}  // namespace quorvane
