#pragma once

#include <QObject>
#include <vector>

class QWidget;

namespace quorvane {

// Makes one Tab stop of several controls: Tab reaches the one that had the focus last, at first the
// first one. The arrow keys move between them, Home and End go to the first and the last.
class SharedTabStop final : public QObject {
  Q_OBJECT

 public:
  // The controls must outlive this object; `parent` owns it.
  SharedTabStop(std::vector<QWidget*> controls, QObject* parent);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void stopAt(const QObject* control);
  bool move(const QObject* from, int key);

  const std::vector<QWidget*> controls_;
};

}  // namespace quorvane
