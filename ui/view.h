#pragma once

#include <QPointer>
#include <QWidget>

#include "app/app_model.h"

namespace quorvane {

// A part of the window that shows the model. However many changes the model announces, it renders
// once a turn of the event loop, and not at all while it is hidden. A control that is disabled for
// a while gets the keyboard's focus back, unless a person has taken it elsewhere.
class View : public QWidget {
  Q_OBJECT

 public:
  explicit View(AppModel& model, QWidget* parent = nullptr);

 protected:
  AppModel& model() const { return model_; }

  // Brings every widget in line with the model. Called before the view first shows.
  virtual void render() = 0;

  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void schedule();
  void renderIfDue();
  void keepFocus(QWidget* before);

  AppModel& model_;
  QPointer<QWidget> unfocused_;  // that had the focus when it was disabled
  bool isDue_ = true;
  bool isScheduled_ = false;
};

}  // namespace quorvane
