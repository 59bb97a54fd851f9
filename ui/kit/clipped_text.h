#pragma once

#include <QLabel>

namespace quorvane {

// A text in at most two lines. The second is elided if there is more; then the whole text is the
// tooltip.
class ClippedText final : public QLabel {
  Q_OBJECT

 public:
  explicit ClippedText(const QString& text, QWidget* parent = nullptr);

  // The height of a text that is `advance` pixels wide in one line.
  static int height(int advance, int width, const QFontMetrics& metrics);

  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override;
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return {0, fontMetrics().height()}; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool event(QEvent* event) override;

 private:
  int advance() const { return fontMetrics().horizontalAdvance(text()); }

  bool isClipped_ = false;  // as painted last
};

}  // namespace quorvane
