#pragma once

#include "ui/model/bar.h"

class QLabel;

namespace quorvane {

class Button;

// The number of unsaved edits, with buttons to save and discard them.
class SaveBar final : public Bar {
  Q_OBJECT

 public:
  explicit SaveBar(AppModel& model, QWidget* parent = nullptr);

  void focusDiscard();

  // While there are unsaved edits.
  bool isWanted() const override { return !model().staged().empty(); }

  QSize sizeHint() const override;

 protected:
  void render() override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  QString countText() const;
  void place();

  QLabel* count_;
  Button* discard_;
  Button* save_;
};

}  // namespace quorvane
