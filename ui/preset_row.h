#pragma once

#include <QWidget>
#include <optional>

#include "presets/tuning_preset.h"

namespace quorvane {

class Button;
class IconButton;

// One preset: its name, who published it, its values, and what to do with it.
class PresetRow final : public QWidget {
  Q_OBJECT

 public:
  // The product's settings are shown.
  PresetRow(const TuningPreset& preset, const std::optional<FanatecProduct>& product,
            QWidget* parent = nullptr);

  const TuningPreset& preset() const { return preset_; }

  // Why it cannot be applied, or nothing; and how far that is while it is, or nothing.
  void show(const QString& whyNot, const QString& progress);
  using QWidget::show;

  // Gives the focus to the button that deletes it.
  void focusTrash();

 signals:
  void applied();
  void deleted();

 private:
  const TuningPreset preset_;
  Button* apply_;
  IconButton* trash_ = nullptr;
};

}  // namespace quorvane
