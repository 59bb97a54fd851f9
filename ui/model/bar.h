#pragma once

#include <vector>

#include "ui/model/view.h"

namespace quorvane {

// A bar of the window's frame, above or below the rows of a section. A BarPlace shows and hides it.
// Its height is that of its size hint, or that for its width if it has one.
class Bar : public View {
  Q_OBJECT

 public:
  using View::View;

  // Whether the bar has something to show, from the model and its own state. Called often, also
  // while the bar is hidden and has not rendered.
  virtual bool isWanted() const = 0;

 signals:
  // isWanted() may have changed by something else than the model, such as the bar's own button.
  void wantedChanged();
};

// A place of the window's frame that shows at most one bar: the most important one that is wanted.
class BarPlace final : public View {
  Q_OBJECT

 public:
  explicit BarPlace(AppModel& model, QWidget* parent = nullptr);

  // Adds a bar that is less important than those already there.
  void add(Bar* bar);

  // The bar that is shown; null if there is none.
  Bar* shown() const { return shown_; }

  // The height of the highest bar, shown or not.
  int roomFor() const;

 signals:
  // Another bar is shown, or none.
  void barChanged();

  // The bar went while it had the keyboard focus, or while no control had it.
  void focusLeft();

 protected:
  void render() override;

 private:
  void choose();

  std::vector<Bar*> bars_;  // the most important one first
  Bar* shown_ = nullptr;
};

}  // namespace quorvane
