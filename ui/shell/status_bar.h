#pragma once

#include "ui/model/view.h"

class QLabel;

namespace quorvane {

class ElidedLabel;
class Spinner;
class TextLink;

// The status bar: the connection, the last status line, and a spinner during exchanges.
class StatusBar final : public View {
  Q_OBJECT

 public:
  explicit StatusBar(AppModel& model, QWidget* parent = nullptr);

  QSize sizeHint() const override;

 protected:
  void render() override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void renderLine();
  void renderUndo();

  ElidedLabel* line_;
  bool isError_ = false;  // the line tells one
  TextLink* undo_;        // undoes the deletion in the status line
  QLabel* progress_;      // of writing values
  Spinner* spinner_;
};

}  // namespace quorvane
