#pragma once

#include <QWidget>

#include "doctor/check.h"

class QLabel;

namespace quorvane {

class Button;

// A check of the doctor's that failed: its title, its finding, the next step, and its command to
// select or to copy.
class CheckRow final : public QWidget {
  Q_OBJECT

 public:
  explicit CheckRow(QWidget* parent = nullptr);

  void show(const DoctorCheck& check);
  using QWidget::show;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QWidget* commandBlock();
  void copy() const;

  QLabel* title_;
  QLabel* finding_;
  QLabel* nextStep_;
  QLabel* command_;
  Button* copy_;
  QWidget* block_;  // command_ and copy_
  QLabel* afterwards_;
};

}  // namespace quorvane
