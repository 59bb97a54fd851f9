#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <chrono>

#include "app/app_model.h"

class QWidget;

namespace quorvane {

class CloseDialog;

// Closes the window without data loss: finishes running writes first, with the window hidden, and
// asks the user about unsaved changes. Main thread; only sessionEnds() blocks.
class Closing final : public QObject {
  Q_OBJECT

 public:
  // The timeout of waiting for writes.
  static constexpr std::chrono::milliseconds longestWait{10'000};

  Closing(AppModel& model, QWidget& window);

  // Whether the window may close now. If not, asks the user, or hides the window until the writes
  // have ended and then emits ended(). Showing the window meanwhile keeps it open.
  bool mayClose();

  // Hides the window and emits ended() when no write is running any more, or after longestWait.
  // Asks no questions.
  void terminate();

  // For the end of the desktop session: blocks until no write is running, longestWait at most.
  // Returns false if there are unsaved changes and `mayAsk` is set: then it asks the user, and the
  // session should not end.
  bool sessionEnds(bool mayAsk);

 signals:
  void ended();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  enum class After { close, closeWhenSaved, end };

  void ask();
  void finish(After after);
  void look();
  void finished();
  void closeWhenSaved();
  void end();
  void giveUp();

  AppModel& model_;
  QWidget& window_;
  QPointer<CloseDialog> question_;
  QTimer timeout_;
  bool isFinishing_ = false;
  bool mayCloseAnyway_ = false;
  After after_ = After::close;
};

}  // namespace quorvane
