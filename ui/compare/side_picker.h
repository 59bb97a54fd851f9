#pragma once

#include <QWidget>
#include <vector>

#include "ui/compare/compare_side.h"

namespace quorvane {

class Picker;

// The picker of one side of a comparison: sides to choose from, and two entries that ask for a text
// or a file.
class SidePicker final : public QWidget {
  Q_OBJECT

 public:
  // `name` is the accessible name, `objectName` that of the picker.
  SidePicker(const QString& name, const QString& objectName, QWidget* parent = nullptr);

  // The sides to choose from; `chosen` is one of them. Does nothing while the list is open.
  void show(const std::vector<CompareSide>& sides, const CompareSide& chosen);
  using QWidget::show;

 signals:
  void chosen(const quorvane::CompareSide& side);
  void textAsked();
  void fileAsked();

 private:
  void choose(int value);

  Picker* picker_;
  std::vector<CompareSide> sides_;
  int shown_ = 0;  // the number of the chosen side
};

}  // namespace quorvane
