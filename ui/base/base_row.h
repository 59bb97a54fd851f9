#pragma once

#include <QWidget>

#include "app/app_model.h"

class QLabel;

namespace quorvane {

class Button;

// One attached base: what it is called, what tells it from others, and whether it is the connected
// one or could be.
class BaseRow final : public QWidget {
  Q_OBJECT

 public:
  explicit BaseRow(HIDDeviceInfo base, QWidget* parent = nullptr);

  const HIDDeviceInfo& base() const { return base_; }

  // How far the way to it is, and why it cannot be connected now, or nothing.
  void show(AppModel::Link link, const QString& whyNot);
  using QWidget::show;

  // Gives the focus to what is always there.
  void focusDetail();

 signals:
  void chosen();

 private:
  const HIDDeviceInfo base_;
  QLabel* detail_;
  QLabel* link_;
  Button* connect_;
  bool isAskedFor_ = false;  // by its button, until it is connected or that has failed
};

}  // namespace quorvane
