#pragma once

#include "ui/model/view.h"

class QLabel;

namespace quorvane {

class Button;

// The number of unsaved edits, with buttons to save and discard them.
class SaveBar final : public View {
  Q_OBJECT

 public:
  explicit SaveBar(AppModel& model, QWidget* parent = nullptr);

  void focusDiscard();
  void setNarrow(bool narrow);

  QSize sizeHint() const override;

 protected:
  void render() override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  QString countText() const;
  void place();

  bool isNarrow_ = false;
  QLabel* count_;
  Button* discard_;
  Button* save_;
};

}  // namespace quorvane
