#pragma once

#include <QPointer>
#include <QWidget>

#include "app/app_model.h"

namespace quorvane {

// A part of the window that shows the model. Changes of the model are coalesced: it renders at most
// once per turn of the event loop, and not at all while it is hidden.
//
// When a control with the keyboard focus is disabled, hidden or deleted, the view takes the focus,
// not a neighbouring control. Tab continues from the control's place. A control that is enabled
// again gets the focus back, unless the user has moved it elsewhere.
class View : public QWidget {
  Q_OBJECT

 public:
  explicit View(AppModel& model, QWidget* parent = nullptr);

  // Whether no control has the keyboard focus: no widget has it, or a view does.
  static bool isFocusFree();

  // Gives the focus to the control that had it last in this view, unless that is a text field; if
  // it cannot take it, to the first control of mainPart() that is safe to focus (isSafeToFocus),
  // else of the view. Without one the view has the focus until it shows one.
  void takeFocus();

 protected:
  // Where the user's work in this view begins.
  virtual const QWidget& mainPart() const { return *this; }

  AppModel& model() const { return model_; }

  // Updates all widgets from the model. Called for the first time before the view is shown.
  virtual void render() = 0;

  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  bool focusNextPrevChild(bool next) override;

  // Takes the focus. Tab continues from `place`, which may be null.
  void keepFocus(QWidget* place);

 private:
  QWidget* firstControl(const QWidget& part) const;
  QWidget* controlBeside(bool next) const;
  void schedule();
  void renderIfDue();
  void returnFocus();

  AppModel& model_;
  QPointer<QWidget> place_;      // Tab continues from here while the view has the focus
  QPointer<QWidget> unfocused_;  // the control that gets the focus back
  bool awaitsControl_ = false;   // takeFocus() found none yet
  bool isDue_ = true;
  bool isScheduled_ = false;
};

}  // namespace quorvane
