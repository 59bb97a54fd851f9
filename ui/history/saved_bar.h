#pragma once

#include "ui/model/notice_bar.h"

namespace quorvane {

class Button;
class IconButton;

// What the last save, preset, undo or redo wrote, with buttons for its receipt, to take it back and
// to dismiss the bar. It ends with the next edit, another set or mode, and when the base leaves.
class SavedBar final : public NoticeBar {
  Q_OBJECT

 public:
  explicit SavedBar(AppModel& model, QWidget* parent = nullptr);

  bool isWanted() const override { return shown_ && !isOver_; }

 signals:
  // The user wants to see what became of each value; the button that was pressed.
  void detailsWanted(QWidget* button);

 protected:
  void render() override;
  Look look() const override;

 private:
  void follow();
  bool hasNewEdit() const;
  void takeBack();
  void dismiss();

  Button* details_;
  Button* back_;
  IconButton* close_;
  std::optional<AppModel::LastWrite> shown_;
  StagedValues staged_;  // when the write ended
  bool isOver_ = false;
};

}  // namespace quorvane
