#pragma once

#include <QPointer>
#include <vector>

#include "ui/model/view.h"

namespace quorvane {

class Button;
class ConfirmDialog;
class HexRow;

// The section "Tools": maintenance, and the raw bytes of the reports.
class ToolsPage final : public View {
  Q_OBJECT

 public:
  explicit ToolsPage(AppModel& model, QWidget* parent = nullptr);

 protected:
  void render() override;

 private:
  void askForReset();

  Button* reread_;
  Button* usbReset_;
  Button* switchMode_;
  Button* factoryReset_;
  HexRow* tuning_;
  HexRow* identity_;
  QPointer<ConfirmDialog> question_;  // while it is open
};

}  // namespace quorvane
