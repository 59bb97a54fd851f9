// A window that a file can be dragged from, for tests that drop it on Quorvane's window:
//
//   quorvane-drag-source FILE
//
// Pressing the left button anywhere in it and moving starts the drag. It prints one line per step:
// pressed, dragging, then dropped or cancelled.

#include <QApplication>
#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QUrl>
#include <QWidget>
#include <cstdio>
#include <memory>
#include <utility>

namespace quorvane {
namespace {

constexpr int sideLength = 200;

void tell(const char* step) {
  std::puts(step);
  std::fflush(stdout);
}

class DragSource final : public QWidget {
 public:
  explicit DragSource(QUrl file) : file_(std::move(file)) { setFixedSize(sideLength, sideLength); }

 protected:
  void mousePressEvent(QMouseEvent* /*event*/) override { tell("pressed"); }

  void mouseMoveEvent(QMouseEvent* event) override {
    if (!event->buttons().testFlag(Qt::LeftButton)) return;
    auto content = std::make_unique<QMimeData>();
    content->setUrls({file_});
    auto* const drag = new QDrag(this);
    drag->setMimeData(content.release());
    tell("dragging");
    tell(drag->exec(Qt::CopyAction) == Qt::CopyAction ? "dropped" : "cancelled");
  }

 private:
  const QUrl file_;
};

}  // namespace
}  // namespace quorvane

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  if (argc != 2) {
    std::fprintf(stderr, "usage: quorvane-drag-source FILE\n");
    return 2;
  }
  quorvane::DragSource source(QUrl::fromLocalFile(QString::fromLocal8Bit(argv[1])));
  source.show();
  return QApplication::exec();
}
