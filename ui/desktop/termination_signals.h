#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <array>
#include <csignal>
#include <optional>

#include "support/unique_fd.h"

namespace quorvane {

// RAII: while it exists, SIGTERM, SIGINT and SIGHUP emit received() on the main thread. One
// instance at a time. A second signal of the same kind has its default action: it ends the process
// at once. A signal that was ignored when the process started stays ignored.
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
