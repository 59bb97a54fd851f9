#pragma once

#include <QDialog>

class QDialogButtonBox;
class QVBoxLayout;

namespace quorvane {

class Button;

// Base class of dialogs: a title, content, and a row of buttons. Show it with open(): it is modal
// to its parent's window only and does not block. Esc cancels it; it deletes itself when closed.
class Dialog : public QDialog {
  Q_OBJECT

 public:
  Dialog(const QString& title, QWidget* parent);

 protected:
  QVBoxLayout& content() { return *content_; }
  void addButton(Button* button, bool accepts);

  // Placed apart from the other buttons. The caller connects its action.
  void addDestructiveButton(Button* button);

  void paintEvent(QPaintEvent* event) override;

 private:
  QVBoxLayout* content_;
  QDialogButtonBox* buttons_;
};

}  // namespace quorvane
