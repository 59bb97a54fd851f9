#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <chrono>

#include "app/app_model.h"

class QWidget;

namespace quorvane {

class CloseDialog;
class Dialog;

// Closes the window without data loss: waits for running writes first, and asks the user about
// unsaved changes. Main thread; only sessionEnds() blocks.
class Closing final : public QObject {
  Q_OBJECT

 public:
  // The timeout of waiting for writes.
  static constexpr std::chrono::milliseconds longestWait{10'000};

  Closing(AppModel& model, QWidget& window);

  // Whether the window may close now. If not, shows what it waits for or asks the user, and closes
  // the window later.
  bool mayClose();

  // Emits ended() when no write is running any more, or after longestWait. Asks no questions.
  void terminate();

  // For the end of the desktop session: blocks until no write is running, longestWait at most.
  // Returns false if there are unsaved changes and `mayAsk` is set: then it asks the user, and the
  // session should not end.
  bool sessionEnds(bool mayAsk);

 signals:
  void ended();

 private:
  enum class After { close, closeWhenSaved, end };

  void ask();
  void finish(After after);
  void look();
  void finished();
  void giveUp();

  AppModel& model_;
  QWidget& window_;
  QPointer<CloseDialog> question_;
  QPointer<Dialog> notice_;  // about running writes
  QTimer timeout_;
  bool isFinishing_ = false;
  bool mayCloseAnyway_ = false;
  After after_ = After::close;
};

}  // namespace quorvane
