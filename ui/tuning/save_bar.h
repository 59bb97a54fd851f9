#pragma once

#include "ui/model/notice_bar.h"

namespace quorvane {

class Button;

// The number of unsaved edits, with buttons to save and discard them. During a save it counts the
// values; afterwards it says how many were not taken.
class SaveBar final : public NoticeBar {
  Q_OBJECT

 public:
  explicit SaveBar(AppModel& model, QWidget* parent = nullptr);

  void focusDiscard();

  // While there are unsaved edits.
  bool isWanted() const override { return !model().staged().empty(); }

 signals:
  // The user wants to see what became of each value; the button that was pressed.
  void detailsWanted(QWidget* button);

 protected:
  void render() override;
  void paintEvent(QPaintEvent* event) override;
  Look look() const override;

 private:
  bool isSaving() const;
  bool hasFailed() const;
  QString countText() const;
  QString failureText() const;

  Button* discard_;
  Button* save_;
  TextLink* details_;
};

}  // namespace quorvane
