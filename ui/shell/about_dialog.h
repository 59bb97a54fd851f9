#pragma once

#include "ui/kit/dialog.h"

namespace quorvane {

// The program's version, its license, and those of what it is built with.
class AboutDialog final : public Dialog {
  Q_OBJECT

 public:
  explicit AboutDialog(QWidget* parent);
};

}  // namespace quorvane
