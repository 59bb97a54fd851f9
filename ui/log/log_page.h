#pragma once

#include "ui/model/view.h"

class QListView;

namespace quorvane {

class LogModel;

// The section "Log". It follows new lines while its end is in view; the lines chosen in it can be
// copied.
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
