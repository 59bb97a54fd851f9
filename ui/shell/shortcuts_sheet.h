#pragma once

#include "ui/kit/dialog.h"

namespace quorvane {

// The dialog with the list of keyboard shortcuts.
class ShortcutsSheet final : public Dialog {
  Q_OBJECT

 public:
  explicit ShortcutsSheet(QWidget* parent);
};

}  // namespace quorvane
