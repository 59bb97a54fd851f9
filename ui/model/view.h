#pragma once

#include <QPointer>
#include <QWidget>

#include "app/app_model.h"

namespace quorvane {

// A part of the window that shows the model. However many changes the model announces, it renders
// once a turn of the event loop, and not at all while it is hidden.
//
// A control that is disabled, hidden or deleted never hands the keyboard focus to its neighbour:
// the view takes the focus itself. Tab goes on from where the control is. A control that is enabled
// again gets the focus back, unless a person has taken it elsewhere.
class View : public QWidget {
  Q_OBJECT

 public:
  explicit View(AppModel& model, QWidget* parent = nullptr);

  // Whether no control has the keyboard focus: nothing has it, or a view keeps it.
  static bool isFocusFree();

  // Gives the focus to the control that had it last in this view. When that cannot take it, to the
  // first one that may be given it unasked (isSafeToFocus), or to the view.
  void takeFocus();

 protected:
  AppModel& model() const { return model_; }

  // Brings every widget in line with the model. Called before the view first shows.
  virtual void render() = 0;

  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  bool focusNextPrevChild(bool next) override;

  // Takes the focus. Tab goes on from the place, which may be none.
  void keepFocus(QWidget* place);

 private:
  void schedule();
  void renderIfDue();
  void returnFocus();

  AppModel& model_;
  QPointer<QWidget> place_;      // from which Tab goes on while the view has the focus
  QPointer<QWidget> unfocused_;  // the control that gets the focus back
  bool isDue_ = true;
  bool isScheduled_ = false;
};

}  // namespace quorvane
