#pragma once

#include "ui/model/bar.h"

namespace quorvane {

// The warning about the standard menu's set A, which games and the base's boot overwrite. It cannot
// be dismissed.
class AutoSetWarning final : public Bar {
  Q_OBJECT

 public:
  explicit AutoSetWarning(AppModel& model, QWidget* parent = nullptr);

  // While set A of the standard menu is active.
  bool isWanted() const override;

 protected:
  void render() override {}
};

}  // namespace quorvane
