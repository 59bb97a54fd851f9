#pragma once

#include <QWidget>

class QLabel;

namespace quorvane {

// A warning above a page: a heading, and a text that goes on in the heading's line. It cannot be
// dismissed: it is shown as long as it applies.
class WarningBar final : public QWidget {
  Q_OBJECT

 public:
  WarningBar(const QString& heading, const QString& body, QWidget* parent = nullptr);

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
  Body* body_;
};

}  // namespace quorvane
