#pragma once

#include <vector>

#include "ui/model/view.h"

class QLabel;
class QHBoxLayout;
class QMenu;

namespace quorvane {

class Button;
class Picker;

// The header of the section "Tuning": title, set, mode, and a menu to load or share values. Where
// they do not fit into one line, it breaks between them.
class TuningHeader final : public View {
  Q_OBJECT

 public:
  explicit TuningHeader(AppModel& model, QWidget* parent = nullptr);

  QSize sizeHint() const override;
  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override;

 protected:
  void render() override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  // Controls that stay together.
  struct Group {
    std::vector<QWidget*> controls;
    int gapAfter = 0;  // to the next group in the same line

    int width() const;
    int height() const;
  };
  using Line = std::vector<Group>;

  static int widthOf(const Line& line);
  static int heightOf(const Line& line);
  QMenu* sourcesMenu();
  Line groups() const;
  std::vector<Line> lines(int width) const;
  void place();
  void renderSets(const TuningSnapshot& menu);

  QLabel* title_;
  QLabel* setLabel_;
  Picker* set_;
  QLabel* mode_;
  Button* switchMode_;
  Button* sources_;
  Button* readAgain_;
};

}  // namespace quorvane
