#pragma once

#include <QWidget>
#include <vector>

#include "doctor/check.h"

class QVBoxLayout;

namespace quorvane {

class FoldButton;

// The checks with the same outcome in one line, "4 passed  Driver, Permission, ...". The line
// unfolds to a row for each check, with its finding. Hidden without checks.
class CheckFold final : public QWidget {
  Q_OBJECT

 public:
  CheckFold(CheckOutcome outcome, const QString& objectName, QWidget* parent = nullptr);

  void show(const std::vector<DoctorCheck>& checks);
  using QWidget::show;

  const std::vector<DoctorCheck>& checks() const { return checks_; }

 private:
  void build();

  const CheckOutcome outcome_;
  FoldButton* line_;
  QWidget* body_;  // the rows
  QVBoxLayout* column_;
  std::vector<DoctorCheck> checks_;
};

}  // namespace quorvane
