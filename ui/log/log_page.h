#pragma once

#include <QModelIndexList>

#include "ui/model/view.h"

class QListView;

namespace quorvane {

class Button;
class LogFilter;
class LogModel;

// The section "Log". Scrolls to new lines while the end is visible. Selected lines, or all that are
// shown, can be copied.
class LogPage final : public View {
  Q_OBJECT

 public:
  explicit LogPage(AppModel& model, QWidget* parent = nullptr);

 protected:
  void render() override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool isAtEnd() const;
  void copyChosen() const;
  void copyAll() const;
  void copy(const QModelIndexList& rows) const;
  void showErrorsOnly(bool errorsOnly);
  void renderButtons();

  LogModel* lines_;
  LogFilter* shown_;
  Button* copyAll_;
  QListView* list_;
};

}  // namespace quorvane
