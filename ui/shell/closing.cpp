#include "ui/shell/closing.h"

#include <QCoreApplication>
#include <QWidget>

#include "ui/shell/close_dialog.h"

namespace quorvane {

Closing::Closing(AppModel& model, QWidget& window)
    : QObject(&window), model_(model), window_(window), timeout_(this) {
  timeout_.setObjectName(QStringLiteral("closingTimeout"));
  timeout_.setSingleShot(true);
  timeout_.setInterval(longestWait);
  connect(&timeout_, &QTimer::timeout, this, &Closing::giveUp);
  connect(&model, &AppModel::changed, this, [this] {
    if (isFinishing_ || question_)
      QMetaObject::invokeMethod(this, &Closing::look, Qt::QueuedConnection);
  });
}

bool Closing::mayClose() {
  if (mayCloseAnyway_) return true;
  if (isFinishing_) return false;
  if (model_.isWriting()) {
    finish(After::close);
    return false;
  }
  if (model_.staged().empty()) return true;
  ask();
  return false;
}

void Closing::ask() {
  if (question_) return;
  question_ = new CloseDialog(model_, &window_);
  connect(question_, &QDialog::accepted, this, [this] {
    model_.saveStaged();
    finish(After::closeWhenSaved);
  });
  connect(question_, &CloseDialog::discarded, this, [this] {
    model_.discardStaged();
    window_.close();
  });
  question_->open();
}

void Closing::terminate() {
  if (question_) question_->reject();
  finish(After::end);
}

void Closing::finish(After after) {
  after_ = after;
  isFinishing_ = true;
  timeout_.start();
  if (!model_.isWriting()) {
    finished();
    return;
  }
  if (notice_) return;
  notice_ = new FinishingNotice(&window_);
  connect(notice_, &QDialog::rejected, this, [this] {
    if (after_ == After::end) return;
    isFinishing_ = false;
    timeout_.stop();
  });
  notice_->open();
}

// Called after each change of the model while finishing or asking.
void Closing::look() {
  if (isFinishing_ && !model_.isWriting()) finished();
  if (question_) question_->render();
}

void Closing::finished() {
  isFinishing_ = false;
  timeout_.stop();
  if (notice_) notice_->accept();
  switch (after_) {
    case After::end:
      mayCloseAnyway_ = true;
      emit ended();
      break;
    case After::closeWhenSaved:  // failed values stay staged; the status line names them
      if (model_.staged().empty()) window_.close();
      break;
    case After::close:
      window_.close();
      break;
  }
}

void Closing::giveUp() {
  isFinishing_ = false;
  mayCloseAnyway_ = true;
  if (notice_) notice_->accept();
  if (after_ == After::end) {
    emit ended();
  } else {
    window_.close();
  }
}

bool Closing::sessionEnds(bool mayAsk) {
  model_.waitForWrites(longestWait);
  QCoreApplication::sendPostedEvents(&model_);  // delivers the results of the writes
  if (!mayAsk || model_.staged().empty()) return true;
  ask();
  return false;
}

}  // namespace quorvane
