#pragma once

#include <QWidget>

class QLabel;

namespace quorvane {

// A warning above a page: a heading, and a text that goes on in the heading's line. It cannot be
// dismissed: it is shown as long as it applies.
class WarningBar final : public QWidget {
  Q_OBJECT

 public:
  static constexpr int textIndent = 32;  // of the texts, for the symbol before them

  WarningBar(const QString& heading, const QString& body, QWidget* parent = nullptr);

  // Whether another line of the warning follows below: then only a line beside it parts them.
  void setContinued(bool isContinued);

  QSize sizeHint() const override;
  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  class Body;

  int textWidth(int width) const;
  bool isRunIn(int width) const;
  void place();

  QLabel* heading_;
  bool isContinued_ = false;
  Body* body_;
};

}  // namespace quorvane
