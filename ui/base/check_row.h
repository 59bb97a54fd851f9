#pragma once

#include <QWidget>

#include "doctor/check.h"

class QLabel;

namespace quorvane {

class OutcomeMark;

// One of the doctor's checks: its title and outcome, and beside them its finding and next step.
class CheckRow final : public QWidget {
  Q_OBJECT

 public:
  explicit CheckRow(QWidget* parent = nullptr);

  void show(const DoctorCheck& check);
  using QWidget::show;

 private:
  QLabel* title_;
  OutcomeMark* outcome_;
  QLabel* finding_;
  QLabel* nextStep_;
};

}  // namespace quorvane
