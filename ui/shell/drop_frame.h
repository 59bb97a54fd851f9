#pragma once

#include <QWidget>

class QMimeData;

namespace quorvane {

// Shows over the window's content, while files are dragged over the window, where they would land
// and what would happen: a frame with a line of text. Takes no part in the drag itself.
class DropFrame final : public QWidget {
  Q_OBJECT

 public:
  // Covers the content, which is its parent.
  explicit DropFrame(QWidget* content);

  // Shows the frame if these files can be dropped; returns whether they can.
  bool offer(const QMimeData& dragged);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace quorvane
