#pragma once

#include <QLabel>

namespace quorvane {

// One line of text that loses its middle or its end when there is no room; the whole is its tooltip
// then.
class ElidedLabel final : public QLabel {
  Q_OBJECT

 public:
  explicit ElidedLabel(Qt::TextElideMode mode, QWidget* parent = nullptr);

  // The accessible name as well.
  void setText(const QString& text);

  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool event(QEvent* event) override;

 private:
  bool isElided() const;

  const Qt::TextElideMode mode_;
};

}  // namespace quorvane
