#pragma once

#include <QWidget>

#include "doctor/check.h"

class QLabel;

namespace quorvane {

class OutcomeMark;

// One check of the doctor's: what was looked at and what came of it, beside what was found and what
// to do next.
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
