#pragma once

#include <QLineEdit>

namespace quorvane {

class IconButton;

// The field to search presets in. Esc empties it; in an empty field it asks to leave.
class SearchField final : public QLineEdit {
  Q_OBJECT

 public:
  explicit SearchField(QWidget* parent = nullptr);

  QSize sizeHint() const override;

 signals:
  void left();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  IconButton* clear_;
};

}  // namespace quorvane
