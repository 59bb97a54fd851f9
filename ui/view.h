#pragma once

#include <QWidget>

#include "app/app_model.h"

namespace quorvane {

// A part of the window that shows the model. However many changes the model announces, it renders
// once a turn of the event loop, and not at all while it is hidden.
class View : public QWidget {
  Q_OBJECT

 public:
  explicit View(AppModel& model, QWidget* parent = nullptr);

 protected:
  AppModel& model() const { return model_; }

  // Brings every widget in line with the model. Called before the view first shows.
  virtual void render() = 0;

  void showEvent(QShowEvent* event) override;

 private:
  void schedule();
  void renderIfDue();

  AppModel& model_;
  bool isDue_ = true;
  bool isScheduled_ = false;
};

}  // namespace quorvane
