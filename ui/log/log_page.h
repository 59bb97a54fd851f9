#pragma once

#include "ui/model/view.h"

class QListView;

namespace quorvane {

class LogModel;

// The section "Log". Scrolls to new lines while the end is visible. Selected lines can be copied.
class LogPage final : public View {
  Q_OBJECT

 public:
  explicit LogPage(AppModel& model, QWidget* parent = nullptr);

 protected:
  void render() override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool isAtEnd() const;
  void copy() const;

  LogModel* lines_;
  QListView* list_;
};

}  // namespace quorvane
