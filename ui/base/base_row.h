#pragma once

#include <QWidget>

#include "app/app_model.h"

class QLabel;

namespace quorvane {

class Button;

// One attached base: its name, its details, and its connection state or a button to connect.
class BaseRow final : public QWidget {
  Q_OBJECT

 public:
  explicit BaseRow(HIDDeviceInfo base, QWidget* parent = nullptr);

  const HIDDeviceInfo& base() const { return base_; }

  // Shows the connection state, and disables the button if `whyNot` (a reason) is not empty.
  void show(AppModel::Link link, const QString& whyNot);
  using QWidget::show;

  // Gives the focus to the detail text, which is always visible.
  void focusDetail();

 signals:
  void chosen();

 private:
  const HIDDeviceInfo base_;
  QLabel* detail_;
  QLabel* link_;
  Button* connect_;
  bool isAskedFor_ = false;  // button pressed; until the base is connected or that fails
};

}  // namespace quorvane
