#pragma once

#include "ui/model/view.h"

class QLabel;

namespace quorvane {

class ElidedLabel;
class Spinner;
class TextLink;

// Whether a base is connected, the last thing that happened, and whether something is going on.
class StatusBar final : public View {
  Q_OBJECT

 public:
  explicit StatusBar(AppModel& model, QWidget* parent = nullptr);

  QSize sizeHint() const override;

 protected:
  void render() override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void renderUndo();

  ElidedLabel* line_;
  TextLink* undo_;    // of the deletion that the line tells of
  QLabel* progress_;  // of values that are written
  Spinner* spinner_;
};

}  // namespace quorvane
