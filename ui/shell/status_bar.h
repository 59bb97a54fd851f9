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

 signals:
  // The preset that the status line tells of is to be compared with the base.
  void compareAsked(const quorvane::TuningPreset& preset);

 protected:
  void render() override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void renderLine();
  void renderUndo();
  void renderCompare();

  ElidedLabel* line_;
  bool isError_ = false;  // the line tells one
  TextLink* undo_;        // undoes the deletion in the status line
  TextLink* compare_;     // compares the imported preset in the status line
  QLabel* progress_;      // of writing values
  Spinner* spinner_;
};

}  // namespace quorvane
