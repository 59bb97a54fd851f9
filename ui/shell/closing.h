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

// Closes the window without losing anything: values that are being written are finished first, and
// a person is asked about unsaved changes. Nothing here blocks, but for sessionEnds().
class Closing final : public QObject {
  Q_OBJECT

 public:
  // After so long nothing is waited for any more.
  static constexpr std::chrono::milliseconds longestWait{10'000};

  Closing(AppModel& model, QWidget& window);

  // Whether the window may close now. Otherwise it shows what it waits for, or asks, and closes the
  // window by and by.
  bool mayClose();

  // Asks nothing: emits ended() when nothing is being written any more.
  void terminate();

  // The desktop's session ends: blocks until nothing is being written any more. False when there
  // are unsaved changes and `mayAsk`: a person is asked then, and the session should not end.
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
  QPointer<Dialog> notice_;  // that says what is waited for
  QTimer timeout_;
  bool isFinishing_ = false;
  bool mayCloseAnyway_ = false;
  After after_ = After::close;
};

}  // namespace quorvane
