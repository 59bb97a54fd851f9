#pragma once

#include "ui/model/bar.h"

namespace quorvane {

class WarningBar;

// The warning about the standard menu's set A, which games and the base's boot overwrite. It cannot
// be dismissed.
class AutoSetWarning final : public Bar {
  Q_OBJECT

 public:
  explicit AutoSetWarning(AppModel& model, QWidget* parent = nullptr);

  // A bar that is the last line of the warning while it is wanted; only it can be dismissed. At
  // most one.
  void setLastLine(Bar* line);

  // While set A of the standard menu is active.
  bool isWanted() const override;

 protected:
  void render() override;

 private:
  WarningBar* warning_;
  Bar* lastLine_ = nullptr;
};

}  // namespace quorvane
