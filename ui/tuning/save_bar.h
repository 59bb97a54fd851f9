#pragma once

#include "ui/model/bar.h"

class QLabel;

namespace quorvane {

class Button;

// The number of unsaved edits, with buttons to save and discard them. During a save it counts the
// values; afterwards it says how many were not taken.
class SaveBar final : public Bar {
  Q_OBJECT

 public:
  explicit SaveBar(AppModel& model, QWidget* parent = nullptr);

  void focusDiscard();

  // While there are unsaved edits.
  bool isWanted() const override { return !model().staged().empty(); }

  QSize sizeHint() const override;
  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override;

 protected:
  void render() override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  struct Layout;

  bool isSaving() const;
  bool hasFailed() const;
  QString countText() const;
  QString failureText() const;
  Layout layoutFor(int width) const;
  int markSize() const;
  void setTextOf(QLabel* label, const QString& text);
  void place();

  QLabel* count_;
  QLabel* failure_;
  Button* discard_;
  Button* save_;
};

}  // namespace quorvane
