#include "ui/shell/closing.h"

#include <QCoreApplication>
#include <QEvent>
#include <QWidget>
#include <string>

#include "ui/model/section.h"
#include "ui/shell/close_dialog.h"

namespace quorvane {

Closing::Closing(AppModel& model, QWidget& window)
    : QObject(&window), model_(model), window_(window), timeout_(this) {
  timeout_.setObjectName(QStringLiteral("closingTimeout"));
  timeout_.setSingleShot(true);
  timeout_.setInterval(longestWait);
  connect(&timeout_, &QTimer::timeout, this, &Closing::giveUp);
  window.installEventFilter(this);
  connect(&model, &AppModel::changed, this, [this] {
    if (isFinishing_ || question_)
      QMetaObject::invokeMethod(this, &Closing::look, Qt::QueuedConnection);
  });
}

bool Closing::mayClose() {
  if (mayCloseAnyway_) return true;
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
  } else if (after != After::closeWhenSaved) {
    window_.hide();
  }
}

// A window that is shown while it waits to end stays open.
bool Closing::eventFilter(QObject* /*watched*/, QEvent* event) {
  if (event->type() == QEvent::Show && isFinishing_ && after_ == After::close) {
    isFinishing_ = false;
    timeout_.stop();
  }
  return false;
}

// Called after each change of the model while finishing or asking.
void Closing::look() {
  if (isFinishing_ && !model_.isWriting()) finished();
  if (question_) question_->render();
}

void Closing::finished() {
  isFinishing_ = false;
  timeout_.stop();
  switch (after_) {
    case After::end:
      end();
      break;
    case After::closeWhenSaved:
      closeWhenSaved();
      break;
    case After::close:
      if (model_.staged().empty()) {
        end();
      } else {
        window_.show();
        window_.close();
      }
      break;
  }
}

// Values that failed stay staged: their rows and the status line say why.
void Closing::closeWhenSaved() {
  if (model_.staged().empty()) {
    window_.close();
  } else {
    model_.setRequestedSection(std::string(rawValue(Section::tuning)));
  }
}

void Closing::giveUp() {
  isFinishing_ = false;
  end();
}

void Closing::end() {
  mayCloseAnyway_ = true;
  window_.hide();
  emit ended();
}

bool Closing::sessionEnds(bool mayAsk) {
  model_.waitForWrites(longestWait);
  QCoreApplication::sendPostedEvents(&model_);  // delivers the results of the writes
  if (!mayAsk || model_.staged().empty()) return true;
  ask();
  return false;
}

}  // namespace quorvane
