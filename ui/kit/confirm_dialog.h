#pragma once

#include "ui/kit/button.h"
#include "ui/kit/dialog.h"

class QLabel;

namespace quorvane {

// A dialog that asks for confirmation of an action.
class ConfirmDialog final : public Dialog {
  Q_OBJECT

 public:
  // The answer of the Enter key.
  enum class Default { confirm, cancel };

  ConfirmDialog(const QString& title, const QString& message, const QString& confirm,
                Button::Kind kind, Default chosen, QWidget* parent);

  void setMessage(const QString& message);

 private:
  QLabel* message_;
};

}  // namespace quorvane
