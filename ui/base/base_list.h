#pragma once

#include <vector>

#include "hid/device_info.h"
#include "ui/kit/form.h"

namespace quorvane {

class AppModel;
class BaseRow;

// The attached bases, to choose another one by hand. It shows while there is a choice: another base
// than the connected one.
class BaseList final : public Card {
  Q_OBJECT

 public:
  explicit BaseList(QWidget* parent = nullptr);

  // Brings the rows in line with the model.
  void show(const AppModel& model);
  using QWidget::show;

 signals:
  // A row's button was pressed.
  void chosen(const quorvane::HIDDeviceInfo& base);

  // There are other controls than before.
  void rebuilt();

 private:
  void build(const std::vector<HIDDeviceInfo>& bases);
  BaseRow* newRow(const HIDDeviceInfo& base);

  std::vector<BaseRow*> rows_;
};

}  // namespace quorvane
