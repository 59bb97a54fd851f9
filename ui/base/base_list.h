#pragma once

#include <vector>

#include "hid/device_info.h"
#include "ui/kit/form.h"

namespace quorvane {

class AppModel;
class BaseRow;

// The list of attached bases, for choosing another one. Visible while there is an attached base
// that is not the connected one.
class BaseList final : public Card {
  Q_OBJECT

 public:
  explicit BaseList(QWidget* parent = nullptr);

  // Updates the rows from the model.
  void show(const AppModel& model);
  using QWidget::show;

 signals:
  // The button of a row was pressed.
  void chosen(const quorvane::HIDDeviceInfo& base);

  // The set of controls has changed: renew the Tab order.
  void rebuilt();

 private:
  void build(const std::vector<HIDDeviceInfo>& bases);
  BaseRow* newRow(const HIDDeviceInfo& base);

  std::vector<BaseRow*> rows_;
};

}  // namespace quorvane
