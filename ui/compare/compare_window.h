#pragma once

#include <QDialog>

#include "app/app_model.h"
#include "ui/compare/compare_side.h"
#include "ui/compare/last_menu.h"

namespace quorvane {

class CompareView;

// A window of its own that compares two sides. Not modal; deletes itself when it is closed.
//
// Only the shell opens it, see Comparing. Views that offer a comparison have a signal for it.
class CompareWindow final : public QDialog {
  Q_OBJECT

 public:
  // The model and the menu must outlive the window.
  CompareWindow(AppModel& model, const LastMenu& lastMenu, QWidget* parent);

  // Shows the window in front of the others, with these sides.
  void compare(const CompareSide& left, const CompareSide& right);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  CompareView* view_;
};

}  // namespace quorvane
