#pragma once

#include "ui/model/view.h"

class QLabel;
class QHBoxLayout;
class QMenu;

namespace quorvane {

class Button;
class Picker;

// The header of the section "Tuning": title, set, mode, and a menu to load or share values.
class TuningHeader final : public View {
  Q_OBJECT

 public:
  explicit TuningHeader(AppModel& model, QWidget* parent = nullptr);

  // The layout in two lines, the title above the rest.
  void setNarrow(bool narrow);

  QSize sizeHint() const override;

 protected:
  void render() override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  QMenu* sourcesMenu();
  void place();
  void renderSets(const TuningSnapshot& menu);

  bool isNarrow_ = false;
  QLabel* title_;
  QLabel* setLabel_;
  Picker* set_;
  QLabel* mode_;
  Button* switchMode_;
  Button* sources_;
  Button* readAgain_;
};

}  // namespace quorvane
