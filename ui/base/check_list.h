#pragma once

#include <vector>

#include "ui/kit/form.h"

namespace quorvane {

class AppModel;
class Button;
class CheckRow;

// The doctor's checks, with buttons to repeat them and to copy or save a report. Visible while the
// model needs an examination and one is running or done.
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
  void showSummary(const AppModel& model);
  void build(std::size_t count);

  QLabel* summary_;
  std::vector<CheckRow*> rows_;
  Button* again_;
  Button* copy_;
  Button* save_;
};

}  // namespace quorvane
