#pragma once

#include "app/app_model.h"
#include "ui/kit/dialog.h"

class QLabel;

namespace quorvane {

// Asks whether to save or discard unsaved changes before the window closes. Accepted: save them.
class CloseDialog final : public Dialog {
  Q_OBJECT

 public:
  CloseDialog(const AppModel& model, QWidget* parent);

  // Shows the current unsaved changes; closes as rejected when there are none.
  void render();

 signals:
  void discarded();

 private:
  const AppModel& model_;
  QLabel* message_;
};

}  // namespace quorvane
