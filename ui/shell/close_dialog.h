#pragma once

#include "app/app_model.h"
#include "ui/kit/dialog.h"

class QLabel;

namespace quorvane {

// Asks what becomes of the unsaved changes before the window closes. Accepted means that they are
// to be saved.
class CloseDialog final : public Dialog {
  Q_OBJECT

 public:
  CloseDialog(const AppModel& model, QWidget* parent);

  // Says what is unsaved now; without anything it closes as rejected.
  void render();

 signals:
  void discarded();

 private:
  const AppModel& model_;
  QLabel* message_;
};

// Says that values are still being written. Rejected means that the window is to stay open.
class FinishingNotice final : public Dialog {
  Q_OBJECT

 public:
  explicit FinishingNotice(QWidget* parent);
};

}  // namespace quorvane
