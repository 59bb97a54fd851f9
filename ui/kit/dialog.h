#pragma once

#include <QDialog>

class QDialogButtonBox;
class QVBoxLayout;

namespace quorvane {

class Button;

// A dialog of ours: a title, content, and a row of buttons. Shown with open(): it belongs to its
// parent's window and blocks nothing else. Esc cancels it; it deletes itself when it is closed.
class Dialog : public QDialog {
  Q_OBJECT

 public:
  Dialog(const QString& title, QWidget* parent);

 protected:
  QVBoxLayout& content() { return *content_; }
  void addButton(Button* button, bool accepts);

  // Apart from the others; what it does is up to who connects it.
  void addDestructiveButton(Button* button);

  void paintEvent(QPaintEvent* event) override;

 private:
  QVBoxLayout* content_;
  QDialogButtonBox* buttons_;
};

}  // namespace quorvane
