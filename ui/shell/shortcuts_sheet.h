#pragma once

#include "ui/kit/dialog.h"

namespace quorvane {

// The sheet of keys.
class ShortcutsSheet final : public Dialog {
  Q_OBJECT

 public:
  explicit ShortcutsSheet(QWidget* parent);
};

}  // namespace quorvane
