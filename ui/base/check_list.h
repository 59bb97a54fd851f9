#pragma once

#include <vector>

#include "doctor/check.h"
#include "ui/kit/form.h"

namespace quorvane {

class AppModel;
class Button;
class CheckFold;
class CheckRow;

// The doctor's checks: a summary with buttons to repeat them and to copy or save a report, then
// each check that failed, then those that passed and those not made, folded to a line each. Visible
// while the model needs an examination and one is running or done.
class CheckList final : public Card {
  Q_OBJECT

 public:
  explicit CheckList(QWidget* parent = nullptr);

  // Updates the rows from the model.
  void show(const AppModel& model);
  using QWidget::show;

 signals:
  void checkAgain();
  void copyReport();
  void saveReport();

  // The set of controls has changed: renew the Tab order.
  void rebuilt();

 private:
  QWidget* summaryRow();
  void showSummary(const AppModel& model);
  void showChecks(const std::vector<DoctorCheck>& checks);
  void build(std::size_t count);

  QLabel* summary_;
  QLabel* time_;
  Button* again_;
  Button* copy_;
  Button* save_;
  std::vector<CheckRow*> rows_;  // of the checks that failed
  CheckFold* passed_;
  CheckFold* notChecked_;
  std::vector<DoctorCheck> checks_;  // what is shown
};

}  // namespace quorvane
