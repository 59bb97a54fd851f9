#pragma once

#include "ui/kit/button.h"
#include "ui/kit/dialog.h"

class QLabel;

namespace quorvane {

// A question before something that matters.
class ConfirmDialog final : public Dialog {
  Q_OBJECT

 public:
  // The answer that Enter gives.
  enum class Default { confirm, cancel };

  ConfirmDialog(const QString& title, const QString& message, const QString& confirm,
                Button::Kind kind, Default chosen, QWidget* parent);

  void setMessage(const QString& message);

 private:
  QLabel* message_;
};

}  // namespace quorvane
