#pragma once

#include <QLabel>

namespace quorvane {

// One line of text, elided in the middle or at the end if there is no room; then the whole text is
// its tooltip.
class ElidedLabel final : public QLabel {
  Q_OBJECT

 public:
  explicit ElidedLabel(Qt::TextElideMode mode, QWidget* parent = nullptr);

  // Also sets the accessible name.
  void setText(const QString& text);

  // Gives these words the ground of a search's hits, whatever their case.
  void highlight(const QStringList& words);

  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool event(QEvent* event) override;

 private:
  bool isElided() const;

  const Qt::TextElideMode mode_;
  QStringList hits_;
};

}  // namespace quorvane
