#pragma once

#include <optional>
#include <vector>

#include "app/app_model.h"
#include "ui/kit/dialog.h"

class QLineEdit;
class QListWidget;

namespace quorvane {

class Button;

// Finds a preset by typing and loads it: a field, and the presets that match what is in it
// (PresetSearch), the user's own first. Up and Down choose while the field has the focus, Enter
// loads. Closes when there is no menu any more.
class PresetFinder final : public Dialog {
  Q_OBJECT

 public:
  explicit PresetFinder(AppModel& model, QWidget* parent);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void refresh();
  void list();
  void renderButton();
  std::optional<TuningPreset> chosen() const;
  void choose(const TuningPreset& preset);
  void load();

  AppModel& model_;
  QLineEdit* field_;
  QListWidget* list_;
  Button* load_;
  std::vector<TuningPreset> presets_;  // all of them, in order
  std::vector<std::size_t> found_;     // numbers of those in the list
};

}  // namespace quorvane
