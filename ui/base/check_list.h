#pragma once

#include <vector>

#include "ui/kit/form.h"

namespace quorvane {

class AppModel;
class Button;
class CheckRow;

// What the doctor found, and what to do with it. It shows while there is trouble that was looked
// into.
class CheckList final : public Card {
  Q_OBJECT

 public:
  explicit CheckList(QWidget* parent = nullptr);

  // Brings the rows in line with the model.
  void show(const AppModel& model);
  using QWidget::show;

 signals:
  void checkAgain();
  void copyReport();
  void saveReport();

  // There are other controls than before.
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
