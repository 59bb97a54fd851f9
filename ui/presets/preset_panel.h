#pragma once

#include <optional>

#include "ui/model/view.h"

class QLabel;

namespace quorvane {

class Button;
class ChangeTable;

// What the chosen preset is for and what it would change, beside the list in wide windows.
class PresetPanel final : public View {
  Q_OBJECT

 public:
  explicit PresetPanel(AppModel& model, QWidget* parent = nullptr);

  // Shows nothing before the first call.
  void explain(const TuningPreset& preset);

 signals:
  void editAsked(const quorvane::TuningPreset& preset);
  void compareAsked(const quorvane::TuningPreset& preset);

 protected:
  void render() override;

 private:
  std::optional<TuningPreset> preset_;
  QLabel* name_;
  QLabel* details_;
  QLabel* notes_;
  QLabel* count_;
  ChangeTable* changes_;
  Button* compare_;
  Button* edit_;
};

}  // namespace quorvane
